#include "columns/views.h"

#include "platform/text/code_page.h"

namespace tarvik {

void RowView::add_line(std::initializer_list<Piece> pieces)
{
    for (const Piece& piece : pieces)
        if (piece.text.has_storage()) pieces_.push_back(piece);
    ends_.push_back(static_cast<std::uint32_t>(pieces_.size()));
}

TextView RowView::kept(TextView added)
{
    constexpr std::size_t at_once = 4096;
    if (added.empty()) return {};
    if (added_.empty() || added_.back().capacity() - added_.back().size() < added.size())
        added_.emplace_back().reserve(std::max(at_once, added.size()));
    const std::size_t start = added_.back().size();
    added.append_to(added_.back());
    return TextView(added_.back()).substr(start);
}

template <typename Work>
void RowView::for_each_piece(std::size_t line, Work&& work) const
{
    static constexpr std::u32string_view tab = U"\t";
    for (std::size_t i = line == 0 ? 0 : ends_[line - 1]; i < ends_[line]; ++i) {
        const auto& [text, is_row] = pieces_[i];
        if (is_row) work(TextView(tab));
        if (!text.empty()) work(text);
        if (is_row) work(TextView(tab));
    }
}

void RowView::append_line(std::size_t index, Text& target) const
{
    for_each_piece(index, [&target](TextView piece) { piece.append_to(target); });
}

std::size_t RowView::line_length(std::size_t index) const
{
    std::size_t length = 0;
    for_each_piece(index, [&length](TextView piece) { length += piece.size(); });
    return length;
}

std::size_t RowView::append_encoded(std::size_t first, std::size_t enough, std::string& target) const
{
    for (; first < ends_.size() && target.size() < enough; ++first) {
        if (const std::size_t next = ends_[first] + prefetch_ahead; next < pieces_.size()) prefetch(pieces_[next].text);
        for_each_piece(first, [&target](TextView piece) { encode_to(piece, target); });
        target += "\r\n";
    }
    return first;
}

void show_view(Program& program, ScratchFile& file, std::shared_ptr<const LineSource> lines)
{
    file.write(*lines);
    if (lines->line_count() > 0) program.form1.RichTextBox3.set_content(PaneText(std::move(lines)));
}

} // namespace tarvik
