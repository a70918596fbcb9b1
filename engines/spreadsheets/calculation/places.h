#pragma once

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

/// Cells and ranges of a sheet, and their names in a part ("B12", "A1:J63").
namespace tarvik::ooxml {

inline constexpr int last_row_of_sheet = 1'048'576;
inline constexpr int last_column_of_sheet = 16'384;

/// Counting from 1.
struct Place {
    int row = 0;
    int column = 0;

    friend bool operator==(const Place&, const Place&) = default;
    /// In the order of a part: row by row.
    friend bool operator<(const Place& a, const Place& b) noexcept
    {
        return a.row < b.row || (a.row == b.row && a.column < b.column);
    }
};

inline bool is_on_sheet(Place place) noexcept
{
    return place.row >= 1 && place.row <= last_row_of_sheet && place.column >= 1 &&
           place.column <= last_column_of_sheet;
}

/// A number from 1 to the limit: a reference that leaves the sheet comes back in at the other side.
inline int wrapped(int number, int limit) noexcept
{
    const int moved = (number - 1) % limit;
    return (moved < 0 ? moved + limit : moved) + 1;
}

/// All four ends belong to it.
struct Range {
    Place first;
    Place last;

    bool contains(Place place) const noexcept
    {
        return place.row >= first.row && place.row <= last.row && place.column >= first.column &&
               place.column <= last.column;
    }
    bool contains(const Range& other) const noexcept { return contains(other.first) && contains(other.last); }
    bool overlaps(const Range& other) const noexcept
    {
        return first.row <= other.last.row && other.first.row <= last.row && first.column <= other.last.column &&
               other.first.column <= last.column;
    }
    void include(Place place) noexcept
    {
        first = {std::min(first.row, place.row), std::min(first.column, place.column)};
        last = {std::max(last.row, place.row), std::max(last.column, place.column)};
    }
    friend bool operator==(const Range&, const Range&) = default;
};

inline constexpr Range whole_sheet{{1, 1}, {last_row_of_sheet, last_column_of_sheet}};

/// The number that is all of the text, as programs write it; nothing for another text or a number too large.
template <typename Number>
std::optional<Number> parsed(std::string_view text) noexcept
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// A decimal number of digits alone, at most `limit` and at least 1.
std::optional<int> parse_count(std::string_view digits, int limit) noexcept;
/// "A" is 1, "XFD" 16,384; nothing for what is no column.
std::optional<int> parse_column(std::string_view letters) noexcept;
std::optional<Place> parse_place(std::string_view name) noexcept;
/// "A1:B2", or "A1" for a range of one cell; the first corner is the upper left one.
std::optional<Range> parse_range(std::string_view name) noexcept;

std::string column_name(int column);
std::string place_name(Place place);
std::string range_name(const Range& range);

} // namespace tarvik::ooxml
