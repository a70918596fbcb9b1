#pragma once

#include "desktop/front/front.h"
#include "mainwindow/clipboard_events.h"

#include <QMouseEvent>

#include <optional>

namespace tarvik {

inline constexpr char32_t enter_key = U'\r';
inline constexpr char32_t escape_key = U'\x1b';

/// The characters that a pressed key stands for: Enter is 13, Esc 27. None for keys that move, edit or command.
Text typed_characters(const QKeyEvent& event);

/// Presses keys in a control one after the other: each goes to its handler first, and one that is not eaten to `reach`,
/// which puts it into the control's text.
void press_keys(Front& front, Control& control, TextView keys, const std::function<void(char32_t)>& reach);

/// The buttons that the program knows.
inline std::optional<MouseButton> mouse_button(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton: return MouseButton::Left;
    case Qt::MiddleButton: return MouseButton::Middle;
    case Qt::RightButton: return MouseButton::Right;
    default: return std::nullopt;
    }
}

} // namespace tarvik
