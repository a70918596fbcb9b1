#include "mainwindow/control.h"

#include <algorithm>

namespace tarvik {

void Control::touched(Property property)
{
    if (listeners_.property_changed) listeners_.property_changed(*this, property);
}

void Control::set_place(const Place& place)
{
    set_left(place.left);
    set_top(place.top);
    set_width(place.width);
    set_height(place.height);
}

void Control::lay(std::u32string_view caption, const Place& place)
{
    set_caption(Text(caption));
    set_place(place);
}

void TextControl::select(Selection selection)
{
    const std::size_t size = content().size();
    selection.start = std::clamp(selection.start, Position(), Position::at_offset(size));
    selection.length = std::min(selection.length, size - selection.start.offset());
    const Selection old = std::exchange(selection_, selection);
    if (selection.start != old.start) touched(Property::SelStart);
    if (selection.length != old.length) touched(Property::SelLength);
}

TextSource TextControl::selected_source() const
{
    return [content = content(), selection = selection_](const std::function<void(TextView)>& take) {
        content.for_each_part(take, selection.start, selection.length);
    };
}

void TextBox::set_text(TextView text)
{
    if (text == text_) return;
    set_caret({});
    content_.reset();
    change(text_, text.str(), Property::Contents);
    if (listeners().text_changed) listeners().text_changed(*this);
}

const PaneText& TextBox::content() const
{
    if (!content_) content_ = PaneText(TextView(text_));
    return *content_;
}

void TextBox::replace_selection(TextView text)
{
    const Selection old = selection();
    Text whole = text_;
    whole.replace(old.start.offset(), old.length, text.str());
    set_text(whole);
    select({old.start + text.size(), 0});
}

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
