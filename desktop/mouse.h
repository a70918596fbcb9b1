#pragma once

#include "mainwindow/clipboard_events.h"

#include <QMouseEvent>

#include <optional>

namespace tarvik {

/// The buttons that the system knows.
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
