#pragma once

#include "desktop/look/pane_fonts.h"
#include "desktop/text_view/columns.h"
#include "desktop/text_view/text_lines.h"
#include "mainwindow/control.h"

#include <map>
#include <optional>
#include <span>

namespace tarvik {

/// One row of a text view: a line, or with line breaking a part of one. Offsets count from 0.
struct Row {
    std::size_t start = 0;
    std::size_t end = 0;        ///< behind the last character that shows
    std::size_t line_start = 0; ///< of the line that it belongs to
    std::size_t line_end = 0;   ///< before the line's end characters
    double height = 0, ascent = 0;

    bool ends_line() const { return end == line_end; }
    /// Behind the last character of a broken row would be the beginning of the next.
    std::size_t last_place() const { return ends_line() ? end : end - 1; }
};

/// What a text looks like.
struct TextLook {
    std::vector<Mark> marks; ///< in text order
    int points = 0;          ///< size of what is not marked; 0 for the design's
    bool breaks_lines = false;
    friend bool operator==(const TextLook&, const TextLook&) = default;
};

/// A character where it shows; x counts from the row's beginning.
struct PlacedCharacter {
    std::size_t offset;
    char32_t character;
    double x, width;
    int points;
    const Mark* mark; ///< none for plain text
};

/// The rows of a text, each laid out only when it is asked for. A line of any length costs its reading once; from then
/// on every part of it is reached from the nearest of its remembered places.
class TextRows {
public:
    /// `width` is where rows break, in pixels; none for lines that run as long as they are. With `stops` the cells of
    /// unbroken lines begin there; else tabs go to stops of one width. Lines, font and stops must outlive the object,
    /// and stops that move need a new one.
    TextRows(const TextLines& lines, const FontSizes& font, TextLook look, std::optional<double> width,
             const ColumnStops* stops = nullptr)
        : lines_(lines), font_(font), look_(std::move(look)), width_(width), stops_(width ? nullptr : stops)
    {
    }

    /// The row that holds the character; the last row for the end of the text.
    Row row_at(std::size_t offset) const;
    std::optional<Row> next(const Row& row) const;
    std::optional<Row> previous(const Row& row) const
    {
        return row.start == 0 ? std::nullopt : std::optional(row_at(row.start - 1));
    }
    /// The row that is so many rows below, or above for a negative number; as far as there are any.
    Row away(Row row, int count) const;

    double x_of(const Row& row, std::size_t offset) const;
    /// The place in the row between two characters that is nearest to x.
    std::size_t offset_at(const Row& row, double x) const;
    /// The characters of the row that show between two x.
    std::vector<PlacedCharacter> between(const Row& row, double left, double right) const;

private:
    // A place in a long line, and the x there.
    struct Place {
        std::size_t offset;
        double x;
    };
    // Goes through the characters; each of the `jumps` tells where a cell begins.
    template <typename Visit>
    void walk(std::size_t from, std::size_t to, double x, std::span<const Place> jumps, Visit&& visit) const;
    std::vector<Place> cell_places(const Row& row) const;
    Row row_from(std::size_t start, std::size_t line_start, std::size_t line_end) const;
    std::size_t row_end(std::size_t start, std::size_t line_end) const;
    std::span<const Mark> marks_from(std::size_t offset) const;
    std::vector<Place>& remembered(std::size_t line_start, double x) const;
    template <typename IsBehind>
    Place place_before(const Row& row, IsBehind&& is_behind) const;
    std::size_t row_start_before(std::size_t line_start, std::size_t line_end, std::size_t offset) const;

    const TextLines& lines_;
    const FontSizes& font_;
    TextLook look_;
    std::optional<double> width_;
    const ColumnStops* stops_;
    // What is remembered of long lines, by where they begin: places in one that is not broken, else where rows begin.
    mutable std::map<std::size_t, std::vector<Place>> places_;
};

} // namespace tarvik
