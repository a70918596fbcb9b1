#pragma once

#include "mainwindow/mainwindow.h"
#include "mainwindow/scratch_file.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <memory>
#include <vector>

namespace tarvik {

/// Lines of a view, each made of rows and cells of a table and of short texts that are added. The rows are kept as they
/// stood when they were added, so that the view stays right whatever becomes of the table; only added texts are copied.
class RowView final : public LineSource {
public:
    /// `buffers` are those that the rows and cells lie in.
    explicit RowView(std::vector<SharedBuffer> buffers = {}) : buffers_(std::move(buffers)) {}
    /// Further buffers of the same kind.
    void keep(const std::vector<SharedBuffer>& buffers)
    {
        buffers_.insert(buffers_.end(), buffers.begin(), buffers.end());
    }

    void reserve(std::size_t rows) { pieces_.reserve(rows), ends_.reserve(rows); }
    /// A row text, an added text, a cell. `row` is the line between the TABs of the row text; one without storage is an
    /// emptied row and gives nothing.
    void add_row(TextView row, TextView added = {}, TextView cell = {})
    {
        add_line({{row, true}, {kept(added)}, {cell}});
    }
    /// A cell, an added text, a row text.
    void add_before_row(TextView cell, TextView added, TextView row) { add_line({{cell}, {kept(added)}, {row, true}}); }
    /// An added text, a cell, an added text.
    void add_cell(TextView before, TextView cell, TextView behind)
    {
        add_line({{kept(before)}, {cell}, {kept(behind)}});
    }

    std::size_t line_count() const override { return ends_.size(); }
    void append_line(std::size_t index, Text& target) const override;
    std::size_t line_length(std::size_t index) const override;
    std::size_t append_encoded(std::size_t first, std::size_t enough, std::string& target) const override;

private:
    struct Piece {
        TextView text;
        bool is_row = false;
    };
    void add_line(std::initializer_list<Piece> pieces);
    /// The text where it stays.
    TextView kept(TextView added);
    /// Calls `work` with each piece of the line in order, the TABs of a row among them.
    template <typename Work>
    void for_each_piece(std::size_t line, Work&& work) const;

    std::vector<SharedBuffer> buffers_;
    std::vector<Piece> pieces_;
    std::vector<std::uint32_t> ends_; ///< of each line in `pieces_`
    std::deque<Text> added_;          ///< texts that never move
};

/// Rows to be named in a message: the first ones by number, all of them by their count.
class RowList {
public:
    void add(std::size_t row, TextView note) { add_entry(U"第 " + number_text(row) + U" 行：" + note); }
    /// A row that the user knows by something else than its number.
    void add_entry(TextView entry)
    {
        if (count_++ < named) text_ += U"\r\n" + entry;
    }
    std::size_t count() const { return count_; }
    Text text() const
    {
        if (count_ <= named) return text_;
        return text_ + U"\r\n…… 共 " + number_text(count_) + U" 行";
    }

private:
    static constexpr std::size_t named = 20;
    Text text_;
    std::size_t count_ = 0;
};

/// Writes the view and shows it in the table pane. A view of no lines leaves the pane as it was.
void show_view(Program& program, ScratchFile& file, std::shared_ptr<const LineSource> lines);

/// Rows of a sorted table lie all over their document. Asking for those that come next while one is in hand saves most
/// of the waiting.
inline constexpr std::size_t prefetch_ahead = 8;

/// Asks for the beginning of a text's storage.
inline void prefetch(TextView text)
{
    constexpr std::size_t line = 64, most = 512;
    const auto* const bytes = static_cast<const char*>(text.data());
    const std::size_t size = std::min(text.size() * text.width(), most);
    for (std::size_t place = 0; place < size; place += line) __builtin_prefetch(bytes + place);
}

} // namespace tarvik
