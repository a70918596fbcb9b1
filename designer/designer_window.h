#pragma once

#include "mainwindow/mainwindow.h"

/// The designer's window: its boxes, its buttons and its closing.
namespace tarvik {

/// A click or a double click on a number box of the design; a double click on the query text or the key column.
void empty_design_box(TextBox& box);

/// "保存参数": asks first whether to save at all, which also shows or hides the help texts, then into which of the
/// three parameter files. A box left empty is stored as "0" and named; an asterisk is stored as it is, though it ends
/// its field when the file is read. Throws Failure when the file cannot be written.
void Form4_Command1_Click(Program& program);
/// "参数校验": loads one of the three parameter files into the boxes. Throws Failure when it cannot be read.
void Form4_Command2_Click(Program& program);

/// "An appear" and "An disappear": the window as such, whatever the designer's button knows of it.
void show_designer(Program& program);
void hide_designer(Program& program);

/// The window is closed: when it is used next its boxes hold the texts of the design, and the help texts show.
void Form4_Unload(Program& program);

} // namespace tarvik
