#pragma once

#include "mainwindow/mainwindow.h"

/// The designer's preview: what the design does to the first key, before any report is made.
namespace tarvik {

/// "预览": fills a template with the first key's rows of the open document, as the boxes stand, and shows its first
/// sheet. No file is written, and neither tables nor panes change. Throws Failure when the template or the key column
/// is of no use.
void Form4_Command3_Click(Program& program);

/// A click on a cell of the preview: its row and column go into the pair of boxes whose row had the focus last.
void Form4_Preview_Click(Program& program);

/// Remembers the row of the design that the user is at; a box of none forgets it.
void Form4_GotFocus(Program& program, const Control& box);

} // namespace tarvik
