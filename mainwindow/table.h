#pragma once

#include "platform/failure.h"
#include "platform/text/document.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <functional>
#include <span>
#include <unordered_set>
#include <vector>

/// The fixed arrays of the program: bounds of their own, but no memory before an element is used.
namespace tarvik {

/// Elements 0 to `last`; an element that was never written reads as a default Value. Storage reaches up to the last
/// element that was.
template <typename Value>
class GrowingArray {
public:
    explicit GrowingArray(std::size_t last) : last_(last) {}

    std::size_t last() const { return last_; }
    Value get(std::size_t index) const { return index < values_.size() ? values_[index] : Value{}; }
    /// Throws Failure beyond the bound.
    void set(std::size_t index, Value value)
    {
        if (index > last_) throw Failure(U"数据超出软件所设定的数组范围。");
        if (values_.empty()) values_.reserve(last_ + 1); // addresses; memory comes as elements are used
        if (index >= values_.size()) values_.resize(index + 1);
        values_[index] = std::move(value);
    }
    /// Back to the default from `first` to `last`, both included.
    void clear(std::size_t first, std::size_t last)
    {
        if (last >= values_.size()) values_.resize(std::min(first, values_.size()));
        else
            for (; first <= last; ++first) values_[first] = Value{};
    }
    /// Every element that has storage.
    const std::vector<Value>& used() const { return values_; }

private:
    std::size_t last_;
    std::vector<Value> values_;
};

/// Keeps the buffers alive that an array's views look into, and lets go of those that no view needs any more.
class BufferKeeper {
public:
    /// Calls its argument for every view in use.
    using Views = std::function<void(const std::function<void(TextView)>&)>;

    /// Those that no view needs go when so many buffers or bytes are kept that it pays.
    void keep(std::span<const SharedBuffer> buffers, const Views& for_each_view);
    /// Whether a view lies in a buffer that is kept, or is empty. For assertions.
    bool holds(TextView view) const;
    std::vector<SharedBuffer> buffers() const { return {buffers_.begin(), buffers_.end()}; }

private:
    void sweep(const Views& for_each_view);

    std::unordered_set<SharedBuffer> buffers_;
    const TextBuffer* latest_ = nullptr;
    std::size_t bytes_ = 0;
    std::size_t sweep_at_ = 64, sweep_at_bytes_ = 64 << 20;
};

/// An array of texts, each a view of a shared buffer. An empty text means that the element holds nothing.
class TextArray {
public:
    explicit TextArray(std::size_t last) : views_(last) {}

    std::size_t last() const { return views_.last(); }
    TextView get(std::size_t index) const { return views_.get(index); }
    /// Stores a text of its own.
    void set(std::size_t index, TextView text);
    /// Stores a piece of `buffer` without a copy.
    void set(std::size_t index, TextView piece, const SharedBuffer& buffer);
    /// Stores a piece of a buffer that keep() was called with.
    void set_view(std::size_t index, TextView piece)
    {
        assert(keeper_.holds(piece));
        views_.set(index, piece);
    }
    /// Keeps all of them from before the first of their pieces is stored. Buffers that no element looks into go.
    void keep(const std::vector<SharedBuffer>& buffers) { keep_all(buffers); }
    /// The buffers that the elements lie in: whoever keeps get() beyond the next change keeps them too.
    std::vector<SharedBuffer> buffers() const { return keeper_.buffers(); }
    void clear(std::size_t first, std::size_t last) { views_.clear(first, last); }
    void swap(std::size_t a, std::size_t b);

private:
    void keep_all(std::span<const SharedBuffer> buffers);
    GrowingArray<TextView> views_;
    BufferKeeper keeper_;
};

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
