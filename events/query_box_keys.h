#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// A key in one of the boxes of Text1, before it reaches the box. The handlers of the query box are asked in their
/// order, and the first that knows the key has it. Sets `eaten` when the key does not reach the box, also when its work
/// then fails. Gives whether a handler knew the key.
bool Text1_KeyPress(Program& program, int index, char32_t key, bool& eaten);

} // namespace tarvik
