#include "mainwindow/control.h"

#include <algorithm>

namespace tarvik {

Selection inside(Selection selection, std::size_t size)
{
    selection.start = std::clamp(selection.start, Position(), Position::at_offset(size));
    selection.length = std::min(selection.length, size - selection.start.offset());
    return selection;
}

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

void TextBox::set_text(Text text)
{
    if (text == text_) return;
    selection_ = {};
    change(text_, std::move(text), Property::Contents);
    if (listeners().text_changed) listeners().text_changed(*this);
}

void TextBox::select(Selection selection)
{
    selection = inside(selection, text_.size());
    const bool moved = selection.start != selection_.start;
    const bool resized = selection.length != selection_.length;
    selection_ = selection;
    if (moved) touched(Property::SelStart);
    if (resized) touched(Property::SelLength);
}

void TextBox::replace_selection(TextView text)
{
    const Selection old = selection_;
    Text whole = text_;
    whole.replace(old.start.offset(), old.length, text.str());
    set_text(std::move(whole));
    select({old.start + text.size(), 0});
}

} // namespace tarvik
