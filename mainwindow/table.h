#pragma once

#include "mainwindow/text_arrays.h"

/// A table of the column engine: its row texts and its cells.
namespace tarvik {

/// The row texts of a table. A row text is TAB, line, TAB; only the line is kept. An emptied row holds no text at all,
/// which is not the same as the closing row, whose line is empty between its two TABs.
class RowTexts {
public:
    explicit RowTexts(std::size_t last) : lines_(last) {}

    std::size_t last() const { return lines_.last(); }
    bool is_empty(std::size_t row) const { return !lines_.get(row).has_storage(); }
    /// The line between the TABs.
    TextView line(std::size_t row) const { return lines_.get(row); }
    /// The row text itself, TABs included; empty for an emptied row.
    Text text(std::size_t row) const;
    void set_line(std::size_t row, TextView line, const SharedBuffer& buffer);
    /// The buffers that the lines lie in: whoever keeps line() beyond the next change keeps them too.
    std::vector<SharedBuffer> buffers() const { return keeper_.buffers(); }
    void clear(std::size_t first, std::size_t last) { lines_.clear(first, last); }
    void swap(std::size_t a, std::size_t b);

private:
    SparseArray<TextView> lines_;
    BufferKeeper keeper_;
};

/// A table of cells: rows 0 to 300000, columns 0 to 180. A cell that was never written reads as the empty text, and a
/// cell that a new row does not reach keeps what it held.
class Table {
public:
    static constexpr std::size_t last_row = 300000;
    static constexpr std::size_t last_column = 180;

    Table();
    /// Empty beyond the bounds.
    TextView cell(std::size_t row, std::size_t column) const
    {
        return column <= last_column ? columns_[column].get(row) : TextView{};
    }
    /// Stores a text of its own. Throws Failure beyond the bounds.
    void set_cell(std::size_t row, std::size_t column, TextView text);
    /// Stores a piece of a buffer that keep() was called with.
    void set_cell_view(std::size_t row, std::size_t column, TextView piece) { columns_[column].set(row, piece); }
    /// Keeps all of them from before the first of their pieces is stored. Buffers that no cell looks into go.
    void keep(const std::vector<SharedBuffer>& buffers);
    /// The buffers that the cells lie in.
    std::vector<SharedBuffer> buffers() const { return keeper_.buffers(); }
    void clear(std::size_t from_row, std::size_t to_row, std::size_t from_column, std::size_t to_column);
    void swap_cells(std::size_t column, std::size_t row_a, std::size_t row_b);

private:
    std::vector<SparseArray<TextView>> columns_;
    BufferKeeper keeper_;
};

} // namespace tarvik
