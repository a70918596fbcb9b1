#pragma once

#include "mainwindow/mainwindow.h"

/// The parameter window Form3 and the notes file that it shows. A notes file that does not exist reads as an empty one.
namespace tarvik {

/// Shows the notes in the table pane, if there are any.
void show_notes_in_pane(Program& program);

/// 0 "确认": leaves the notes, after the question whether to save them, or minimises the window. Notes that cannot be
/// saved throw Failure and stay in view. 1 "说明": shows the notes as the file has them.
void Form3_Command1_Click(Program& program, int index);
/// Lays notes and buttons out for the window's width and height.
void Form3_Resize(Program& program);
/// Closing hides the window; its boxes keep their texts.
void Form3_Close(Program& program);

} // namespace tarvik
