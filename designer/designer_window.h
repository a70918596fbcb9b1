#pragma once

#include "mainwindow/mainwindow.h"

/// The designer's window as such: its boxes and its closing.
namespace tarvik {

/// A click or a double click on a number box of the design; a double click on the query text or the key column.
void empty_design_box(TextBox& box);
/// "An appear" and "An disappear": the window as such, whatever the designer's button knows of it.
void show_designer(Program& program);
void hide_designer(Program& program);
/// The window goes for good: when it is used next its boxes hold the texts of the design.
void Form4_Unload(Program& program);

} // namespace tarvik
