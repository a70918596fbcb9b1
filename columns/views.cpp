#include "columns/views.h"

#include "platform/text/code_page.h"

namespace tarvik {

void RowView::add(TextView before, Piece first, TextView between, Piece second)
{
    const bool alone = before.empty() && between.empty() && !second.is_row && second.text.empty();
    if (!alone)
        more_.push_back({added_.size(), static_cast<std::uint32_t>(before.size()),
                         static_cast<std::uint32_t>(between.size()), second});
    lines_.push_back({first.text, alone ? 0 : static_cast<std::uint32_t>(more_.size()), first.is_row});
    before.append_to(added_);
    between.append_to(added_);
}

template <typename Work>
void RowView::for_each_piece(const Line& line, Work&& work) const
{
    static constexpr std::u32string_view tab = U"\t";
    const auto piece = [&work](TextView text, bool is_row) {
        const bool tabs = is_row && text.has_storage();
        if (tabs) work(TextView(tab));
        if (!text.empty()) work(text);
        if (tabs) work(TextView(tab));
    };
    const More more = line.more > 0 ? more_[line.more - 1] : More{};
    const TextView added = added_;
    if (more.before > 0) work(added.substr(more.added, more.before));
    piece(line.first, line.first_is_row);
    if (more.between > 0) work(added.substr(more.added + more.before, more.between));
    piece(more.second.text, more.second.is_row);
}

void RowView::append_line(std::size_t index, Text& target) const
{
    for_each_piece(lines_[index], [&target](TextView piece) { piece.append_to(target); });
}

std::size_t RowView::line_length(std::size_t index) const
{
    std::size_t length = 0;
    for_each_piece(lines_[index], [&length](TextView piece) { length += piece.size(); });
    return length;
}

std::size_t RowView::append_encoded(std::size_t first, std::size_t enough, std::string& target) const
{
    for (; first < lines_.size() && target.size() < enough; ++first) {
        prefetch(lines_[std::min(first + prefetch_ahead, lines_.size() - 1)].first);
        for_each_piece(lines_[first], [&target](TextView piece) { encode_to(piece, target); });
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
