#pragma once

#include "mainwindow/mainwindow.h"

/// The keys of the query box that drive the column engine, and the buttons that spell them.
namespace tarvik {

/// Esc at any time, the other keys of the engine once a column query has run. Gives whether the key was one of them;
/// `eaten` is set when it does not reach the box, before its work begins.
bool column_keys(Program& program, char32_t key, bool& eaten);

/// "Esc", "q" and the third keys of the frames; they work whatever has the focus and without a query before.
void Command7_Click(Program& program, int index);
void Command8_Click(Program& program, int index);
void Command9_Click(Program& program, int index);

} // namespace tarvik
