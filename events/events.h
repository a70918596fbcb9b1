#pragma once

#include "mainwindow/mainwindow.h"
#include "runs/report_commands.h"

/// What happens to the window, and which handler each of it goes to.
namespace tarvik {

enum class EventKind {
    Click,
    DblClick,
    KeyPress,
    MouseDown,
    MouseUp,
    GotFocus,
    LostFocus,
    Tick,   ///< a timer fell due
    Resize, ///< of a window; its width and height are set already
    Close,  ///< the user closes a window
    Menu    ///< an entry of the context menu was picked
};

struct Event {
    EventKind kind;
    Control& control; ///< for Menu: the main window

    MouseButton button = MouseButton::Left; ///< MouseDown and MouseUp
    bool ctrl = false;                      ///< MouseDown: Ctrl is held
    char32_t key = 0;                       ///< KeyPress: 13 Enter, 27 Esc, else the character
    MenuEntry entry = MenuEntry::nothing;   ///< Menu

    bool eaten = false;     ///< set by a handler: the key does not reach the box
    bool known = false;     ///< set by a handler: the key was more than a character of a text
    bool cancelled = false; ///< set by a handler: the window stays open
};

/// The command language: every report command in the order in which the query box is tested for it.
CommandTable report_commands();

/// Brings the program from the start of the process to its shown window: joins model and handlers, then runs start-up.
/// The front's listener must be set before.
void start(Program& program);

/// Whether the table has a handler for it.
bool has_handler(const Event& event);

/// Runs the handler of an event, if there is one. It is the one place that reports a failure to the user; nothing is
/// thrown but what no handler could go on after.
void dispatch(Program& program, Event& event);

} // namespace tarvik
