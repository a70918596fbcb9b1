#include "mainwindow/pane.h"

#include <algorithm>

namespace tarvik {

void Pane::set_content(PaneText content)
{
    content_ = std::move(content);
    selection_ = {};
    text_font_size_ = selection_font_size_ = 0;
    touched(Property::Contents);
    if (!marks_.empty()) set_marks({});
}

void Pane::append(TextView text)
{
    if (text.empty()) return;
    content_.append(text);
    touched(Property::Contents);
}

void Pane::select(Selection selection)
{
    selection = inside(selection, content_.size());
    const bool moved = selection.start != selection_.start;
    const bool resized = selection.length != selection_.length;
    selection_ = selection;
    if (moved) touched(Property::SelStart);
    if (resized) touched(Property::SelLength);
}

SharedText Pane::selected_text() const
{
    if (selection_.length == 0) return {};
    return content_.slice(selection_.start, selection_.length);
}

TextSource Pane::selected_source() const
{
    return [content = content_, selection = selection_](const std::function<void(TextView)>& take) {
        content.for_each_part_of(selection.start, selection.length, take);
    };
}

void Pane::replace_selection(TextView text)
{
    const Selection old = selection_;
    if (old.length == 0 && text.empty()) return;
    content_.replace(old.start, old.length, text);
    std::vector<Mark> marks;
    for (Mark mark : marks_) {
        if (mark.start >= old.start + old.length) mark.start = mark.start - old.length + text.size();
        else if (mark.start + mark.length > old.start) continue;
        marks.push_back(mark);
    }
    selection_ = {old.start + text.size(), 0};
    touched(Property::Contents);
    set_marks(std::move(marks));
    if (listeners().pane_edited) listeners().pane_edited(*this, old, text);
}

void AutoSwitchLine(Pane& pane, bool on)
{
    pane.set_line_breaking(on);
}

} // namespace tarvik
