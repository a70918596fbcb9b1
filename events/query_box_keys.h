#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// A key in one of the boxes of Text1, before it reaches the box. The handlers of the query box are asked in their
/// order, and the first that knows the key has it. Gives whether the key is eaten.
bool Text1_KeyPress(Program& program, int index, char32_t key);

} // namespace tarvik
