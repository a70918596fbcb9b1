#pragma once

#include "mainwindow/text_arrays.h"

#include <cstdint>
#include <span>

/// A table of the column engine: its row texts and its cells.
namespace tarvik {

/// The row texts of a table. A row text is TAB, line, TAB; only the line is kept. An emptied row holds no text at all,
/// which is not the same as the closing row, whose line is empty between its two TABs.
class RowTexts : private TextArray {
public:
    using TextArray::buffers, TextArray::clear, TextArray::last, TextArray::swap, TextArray::TextArray;

    bool is_empty(std::size_t row) const { return !get(row).has_storage(); }
    /// The line between the TABs.
    TextView line(std::size_t row) const { return get(row); }
    /// The row text itself, TABs included; empty for an emptied row.
    Text text(std::size_t row) const { return is_empty(row) ? Text() : U"\t" + line(row) + U"\t"; }
    void set_line(std::size_t row, TextView line, const SharedBuffer& buffer)
    {
        set(row, line.has_storage() ? line : TextView(U""), buffer);
    }
};

/// A table of cells: rows 0 to 300000, columns 0 to 180. A cell that was never written reads as the empty text, and a
/// cell that a new row does not reach keeps what it held. A cell that a split made is no more than the place where it
/// begins in its row's line.
class Table {
public:
    static constexpr std::size_t last_row = 300000;
    static constexpr std::size_t last_column = 180;

    Table();
    /// Empty beyond the bounds.
    TextView cell(std::size_t row, std::size_t column) const;
    /// Asks for the memory of a cell that will be read soon.
    void prefetch(std::size_t row, std::size_t column) const;
    /// Stores a text of its own. Throws Failure beyond the bounds.
    void set_cell(std::size_t row, std::size_t column, TextView text);
    /// Stores a piece of a buffer that keep() was called with.
    void set_cell_view(std::size_t row, std::size_t column, TextView piece);
    /// The cells of columns 1 to starts.size() become the fields of a line of less than 2^31 characters, each from its
    /// start, which counts from 0, up to the next TAB or the line's end. The line lies in a buffer that keep() was
    /// called with.
    void set_fields(std::size_t row, TextView line, std::span<const std::uint32_t> starts);
    /// Keeps all of them from before the first of their pieces is stored. Buffers that no cell looks into go.
    void keep(const std::vector<SharedBuffer>& buffers);
    /// The buffers that the cells lie in.
    std::vector<SharedBuffer> buffers() const { return keeper_.buffers(); }
    void clear(std::size_t from_row, std::size_t to_row, std::size_t from_column, std::size_t to_column);
    void swap_cells(std::size_t column, std::size_t row_a, std::size_t row_b);

private:
    /// 0: never written. Else the place in the row's line, from 1, or with the highest bit the number of a view of its
    /// own.
    using Cell = std::uint32_t;
    static constexpr Cell own = Cell{1} << 31U;
    struct Line {
        TextView text;
        std::size_t columns = 0; ///< no column behind this one lies in it
    };

    void set_own(std::size_t row, std::size_t column, TextView piece);
    void forget(std::size_t row, std::size_t column);

    std::vector<GrowingArray<Cell>> columns_;
    GrowingArray<Line> lines_;
    std::vector<TextView> views_; ///< of the cells that lie in no line
    std::vector<Cell> free_;      ///< numbers of views that no cell has
    BufferKeeper keeper_;
};

} // namespace tarvik
