#include "scripts/user.h"

#include <utility>

namespace tarvik {

namespace {

constexpr char32_t enter = 13, ctrl_enter = 10, take_back = 8, tab = 9, first_character = 32;

Control& on_screen(Control& target)
{
    if (dynamic_cast<Timer*>(&target)) throw ScriptFailure("a timer is nothing that a user can touch");
    return target;
}

// What a key that no handler has eaten does at the end of the text.
void reach(TextControl& box, char32_t key)
{
    const std::size_t size = box.content().size();
    if (key == take_back && size > 0) {
        box.select({Position(size), 1});
        box.replace_selection({});
        return;
    }
    Text typed;
    if ((key == enter || key == ctrl_enter) && box.multi_line()) typed = U"\r\n";
    if (key == tab || key >= first_character) typed = key;
    if (typed.empty()) return;
    box.select({Position::at_offset(size), 0});
    box.replace_selection(typed);
}

} // namespace

void User::click(Control& target)
{
    if (auto* const pane = dynamic_cast<Pane*>(&target)) pane->select({pane->selection().start, 0});
    press(target, MouseButton::Left, false);
    release(target, MouseButton::Left);
    send({EventKind::Click, target});
}

void User::double_click(Control& target)
{
    click(target);
    send({EventKind::DblClick, target});
}

void User::press(Control& target, MouseButton button, bool ctrl)
{
    Control& control = on_screen(target);
    move_focus(control);
    send({.kind = EventKind::MouseDown, .control = control, .button = button, .ctrl = ctrl});
}

void User::release(Control& target, MouseButton button)
{
    send({.kind = EventKind::MouseUp, .control = on_screen(target), .button = button});
}

void User::focus(Control& target)
{
    move_focus(on_screen(target));
}

void User::type(TextControl& box, TextView keys)
{
    move_focus(box);
    for (std::size_t i = 0; i < keys.size() && !program_.ended; ++i) press_key(box, keys[i]);
}

void User::press_key(TextControl& box, char32_t key)
{
    Event event{.kind = EventKind::KeyPress, .control = box, .key = key};
    handle(event);
    if (!event.eaten) {
        reach(box, key);
        watches_.look_at_members();
    }
    settle();
}

void User::pick(MenuEntry entry)
{
    send({.kind = EventKind::Menu, .control = program_.form1.window, .entry = entry});
}

void User::resize(Window& window, double width, double height)
{
    window.set_width(width);
    window.set_height(height);
    send({EventKind::Resize, window});
}

void User::restore(Window& window)
{
    window.set_window_state(0);
    send({EventKind::Resize, window});
}

void User::open(Window& window)
{
    window.set_visible(true);
    window.set_window_state(0);
    settle();
}

void User::close(Window& window)
{
    Event event{EventKind::Close, window};
    handle(event);
    if (!event.cancelled) window.set_visible(false);
    settle();
}

void User::tick(Timer& timer)
{
    send({EventKind::Tick, timer});
}

void User::model_changed(Control& control, Property property)
{
    if (property == Property::Focus) focus_request_ = &control;
    const bool window_appears =
        property == Property::Visible && control.visible() && dynamic_cast<Window*>(&control) != nullptr;
    if (window_appears && shown_.insert(&control).second) to_resize_.push_back(&control);
}

void User::settle()
{
    while (focus_request_ || !to_resize_.empty()) {
        for (Control* window : std::exchange(to_resize_, {})) {
            Event resized{EventKind::Resize, *window};
            handle(resized);
        }
        if (Control* asked = std::exchange(focus_request_, nullptr)) move_focus(*asked);
    }
}

void User::send(Event event)
{
    handle(event);
    settle();
}

void User::handle(Event& event)
{
    dispatch(program_, event);
    watches_.look_at_members();
}

void User::move_focus(Control& control)
{
    if (focus_ == &control) return;
    Control* const old = std::exchange(focus_, &control);
    if (old) {
        Event lost{EventKind::LostFocus, *old};
        handle(lost);
    }
    Event got{EventKind::GotFocus, control};
    handle(got);
}

} // namespace tarvik
