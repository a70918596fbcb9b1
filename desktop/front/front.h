#pragma once

#include "desktop/front/event_queue.h"
#include "desktop/front/mirror.h"
#include "desktop/look/theme.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace tarvik {

/// What the controls of a window work with, and the window's own scale.
struct Front {
    Program& program;
    EventQueue& queue;
    Mirror& mirror;
    const Theme& theme;
    Scale scale;
};

inline constexpr char32_t enter_key = U'\r';
inline constexpr char32_t escape_key = U'\x1b';

/// The characters that a pressed key stands for: Enter is 13, Esc 27. None for keys that move, edit or command.
Text typed_characters(const QKeyEvent& event);

/// Presses keys in a control one after the other: each goes to its handler first, and one that is not eaten to `reach`,
/// which puts it into the control's text. A character that `is_text` goes there at once.
void press_keys(
    Front& front, Control& control, TextView keys, const std::function<void(char32_t)>& reach,
    const std::function<bool(char32_t)>& is_text = [](char32_t) { return false; });

/// Puts `kind`, a press or a release of the mouse in a control, into the queue. Nothing for buttons that the program
/// does not know.
void post_mouse(Front& front, Control& control, EventKind kind, const QMouseEvent& event);

/// Takes a call for the context menu. One that comes from the keyboard is a press of the right button; the mouse has
/// told of its press already.
void take_context_menu(Front& front, Control& control, QContextMenuEvent& event);

} // namespace tarvik
