#include "mainwindow/control.h"

#include <algorithm>

namespace tarvik {

void Control::touched(Property property)
{
    if (listeners_.property_changed) listeners_.property_changed(*this, property);
}

void Control::set_place(double left, double top, double width, double height)
{
    set_left(left);
    set_top(top);
    set_width(width);
    set_height(height);
}

void Control::lay(Text caption, double left, double top, double width, double height)
{
    set_caption(std::move(caption));
    set_place(left, top, width, height);
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

} // namespace tarvik
