#include "columns/views.h"

namespace tarvik
{

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

void write_view(ScratchFile& file, const LineSource& lines)
{
    file.open();
    file.write_source(lines);
    file.close();
}

void show_view(Program& program, ScratchFile& file, std::shared_ptr<const LineSource> lines)
{
    write_view(file, *lines);
    if (lines->line_count() > 0) program.form1.RichTextBox3.set_content(PaneText(std::move(lines)));
}

} // namespace tarvik
