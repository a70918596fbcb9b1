#include "columns/views.h"

#include "columns/prefetch.h"
#include "platform/code_page.h"

namespace tarvik {

void RowView::add(TextView row, TextView before, TextView after)
{
    Line line{row, added_.size(), 0, 0};
    before.append_to(added_);
    line.after = added_.size();
    after.append_to(added_);
    line.end = added_.size();
    lines_.push_back(line);
}

void RowView::append_line(std::size_t index, Text& target) const
{
    const Line& line = lines_[index];
    target.append(added_, line.before, line.after - line.before);
    if (line.row.has_storage()) {
        target += U'\t';
        line.row.append_to(target);
        target += U'\t';
    }
    target.append(added_, line.after, line.end - line.after);
}

void RowView::append_encoded(std::size_t first, std::size_t end, std::string& target) const
{
    for (std::size_t i = first; i < end; ++i) {
        const Line& line = lines_[i];
        prefetch(lines_[std::min(i + prefetch_ahead, lines_.size() - 1)].row);
        const TextView added = added_;
        encode_to(added.substr(line.before, line.after - line.before), target);
        if (line.row.has_storage()) {
            target += '\t';
            encode_to(line.row, target);
            target += '\t';
        }
        encode_to(added.substr(line.after, line.end - line.after), target);
        target += "\r\n";
    }
}

void show_view(Program& program, ScratchFile& file, std::shared_ptr<const LineSource> lines)
{
    file.write(*lines);
    if (lines->line_count() > 0) program.form1.RichTextBox3.set_content(PaneText(std::move(lines)));
}

} // namespace tarvik
