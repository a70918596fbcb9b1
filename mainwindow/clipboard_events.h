#pragma once

#include "mainwindow/mainwindow.h"

/// The mouse on the panes and boxes, and what it does with the clipboard.
namespace tarvik {

enum class MouseButton { Left, Middle, Right };
enum class MenuEntry { copy1, nothing, paste1 };

/// The middle button with Ctrl enlarges all of the text; the right button opens the context menu.
void RichTextBox_MouseDown(Program& program, Pane& pane, MouseButton button, bool ctrl);
/// Every selection is a copy: the clipboard holds what is selected when a button is released, also nothing.
void RichTextBox_MouseUp(Program& program, Pane& pane);

/// Query box and number box: the right button opens the context menu, and the next release pastes.
void Text1_MouseDown(Program& program, int index, MouseButton button);
void Text1_MouseUp(Program& program, int index);

/// An entry of the context menu acts on the box that has the focus.
void menu_Click(Program& program, MenuEntry entry);

} // namespace tarvik
