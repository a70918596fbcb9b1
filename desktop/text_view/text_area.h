#pragma once

#include "desktop/text_view/text_rows.h"

#include <algorithm>
#include <functional>

namespace tarvik {

/// The part of a text that a view of some size shows: which rows, and where. Only rows that show are laid out. Lengths
/// are pixels from the view's corner, offsets count from 0.
class TextArea {
public:
    struct ShownRow {
        Row row;
        double y;
    };
    static constexpr double margin = 5;

    explicit TextArea(const FontSizes& font) : font_(font) { lay_rows(); }
    TextArea(const TextArea&) = delete;
    TextArea& operator=(const TextArea&) = delete;

    /// A text that begins as before stays where it is; any other shows from its beginning.
    void set_text(PaneText text, bool stay);
    void set_look(TextLook look);
    /// Whether a text that is no table breaks its lines though its look does not ask for it.
    void set_wraps_prose(bool wraps);
    void set_size(double width, double height);
    /// What stands over a table's columns needs this much room, by number; asked whenever the rows are laid.
    std::function<double(int column)> heading_width = [](int) { return 0.0; };
    /// Lays the rows anew, after a change of the font or of the headings.
    void lay_rows();

    const TextLines& lines() const { return lines_; }
    /// Where the columns of a text without line breaking begin: wide enough for all that has been shown.
    const ColumnStops& stops() const { return stops_; }
    /// Whether the text reads like a table: most of its first lines have cells.
    bool is_table() const { return is_table_; }
    /// The number of the column that begins at stop 0: 1, or 0 where the rows begin with a tab or tell their columns.
    int first_column() const { return first_column_; }
    const TextRows& rows() const { return *rows_; }
    bool breaks_lines() const { return breaks_lines_; }
    /// From the top; the last may stick out.
    const std::vector<ShownRow>& shown() const { return shown_; }
    double width() const { return width_; }
    double left() const { return left_; }
    /// The width of the widest row that has been shown.
    double widest() const { return widest_ + 2 * margin; }
    std::size_t top() const { return top_; }

    /// Shows from the row that holds the offset, or as far down as the text goes.
    void scroll_to(std::size_t offset);
    void scroll_rows(int rows) { scroll_to(rows_->away(rows_->row_at(top_), rows).start); }
    void set_left(double left) { left_ = std::max(0.0, left); }
    /// The row that is on top when the end of the text shows.
    std::size_t last_top() const { return top_above(rows_->row_at(lines_.size())); }
    /// Moves the view no further than needed; a place above or far below comes to the top when `to_top` says so.
    void bring_into_view(std::size_t offset, bool to_top);
    /// Rows that show as a whole, at least one.
    int whole_rows() const;

    std::size_t offset_at(double x, double y) const;
    /// X of a place in a row, as the view shows it.
    double x_of(const Row& row, std::size_t offset) const { return margin - left_ + rows_->x_of(row, offset); }

private:
    void show_rows();
    void make_rows();
    /// The row that is on top when this one is the last that shows as a whole.
    std::size_t top_above(Row row) const;
    void look_at_first_lines();
    void make_room(std::size_t column, double width);
    std::vector<Cell> make_room(std::size_t start, std::size_t end);
    const FontSizes& font_;
    TextLines lines_;
    TextLook look_;
    bool wraps_prose_ = false;
    bool breaks_lines_ = false; // as it shows
    ColumnStops stops_;
    bool stops_moved_ = false; // since the rows were made
    bool is_table_ = false;
    int first_column_ = 1;
    std::optional<TextRows> rows_;
    double width_ = 0, height_ = 0, left_ = 0, widest_ = 0;
    std::size_t top_ = 0;
    std::vector<ShownRow> shown_;
};

} // namespace tarvik
