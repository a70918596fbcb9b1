#pragma once

#include "events/events.h"
#include "scripts/names.h"

#include <set>
#include <vector>

namespace tarvik {

/// What a user does at the windows as far as it is made of events. Keeps which control has the focus.
class User {
public:
    /// `watches` look after each handler and after each change of a text that the user makes.
    User(Program& program, Watches& watches) : program_(program), watches_(watches) {}

    void click(Control& target);
    void double_click(Control& target);
    void press(Control& target, MouseButton button, bool ctrl);
    void release(Control& target, MouseButton button);
    void focus(Control& target);
    /// Presses the keys one after the other; 13 is Enter, 27 Esc, 8 the key that takes back.
    void type(TextControl& box, TextView keys);
    void pick(MenuEntry entry);
    void resize(Window& window, double width, double height);
    void restore(Window& window);
    /// Brings back a window that was closed or set aside.
    void open(Window& window);
    void close(Window& window);
    /// The timer fell due.
    void tick(Timer& timer);

    /// To be called for every change in the model: a handler may ask for the focus or show a window.
    void model_changed(Control& control, Property property);
    /// Gives the focus that a handler asked for and resizes windows that were shown for the first time. Every act ends
    /// with it; only the start of the program needs a call of its own.
    void settle();

private:
    void send(Event event);
    void handle(Event& event);
    void move_focus(Control& control);
    void press_key(TextControl& box, char32_t key);

    Program& program_;
    Watches& watches_;
    Control* focus_ = nullptr;
    Control* focus_request_ = nullptr;
    std::set<const Control*> shown_;
    std::vector<Control*> to_resize_;
};

} // namespace tarvik
