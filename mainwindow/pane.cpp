#include "mainwindow/pane.h"

#include <algorithm>

namespace tarvik {

void Pane::set_content(PaneText content)
{
    content_ = std::move(content);
    set_caret({});
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

void Pane::replace_selection(TextView text)
{
    const Selection old = selection();
    if (old.length == 0 && text.empty()) return;
    content_.replace(old.start, old.length, text);
    std::vector<Mark> marks;
    for (Mark mark : marks_) {
        if (mark.start >= old.start + old.length) mark.start = mark.start - old.length + text.size();
        else if (mark.start + mark.length > old.start) continue;
        marks.push_back(mark);
    }
    set_caret({old.start + text.size(), 0});
    touched(Property::Contents);
    set_marks(std::move(marks));
    if (listeners().pane_edited) listeners().pane_edited(*this, old, text);
}

} // namespace tarvik
