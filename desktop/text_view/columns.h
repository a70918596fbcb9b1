#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// The columns of a text view: a line's cells, and where on the screen the columns begin.
namespace tarvik {

/// A cell of a line; offsets count from the line's beginning.
struct Cell {
    std::size_t start, end;
    std::size_t column; ///< how many tabs stand before it, or the column that the view of a split names
};

/// Beyond so many characters the cells of a line are not looked for.
inline constexpr std::size_t longest_table_line = 65'536;

/// The cells of a line, if it has any: parted by tabs, or as the view of a split shows them ("suf(0,3)***Paris").
std::vector<Cell> cells_of(std::u32string_view line);

/// Where the columns of a view begin, in pixels from the line's beginning. They only ever move apart.
class ColumnStops {
public:
    /// Makes room for a cell of this width; gives whether a column moved. A cell wider than `most` runs over.
    bool make_room(std::size_t column, double width, double least, double most);
    double start(std::size_t column) const;
    std::size_t count() const { return widths_.size(); }
    void clear() { widths_.clear(); }

private:
    std::vector<double> widths_;
};

} // namespace tarvik
