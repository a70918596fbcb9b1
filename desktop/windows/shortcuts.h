#pragma once

#include "desktop/windows/form1_window.h"
#include "desktop/windows/form3_window.h"
#include "desktop/windows/manual_window.h"

namespace tarvik {

/// The keys that work beside those of the boxes, wherever the focus is.
void add_shortcuts(Program& program, Form1Window& form1, Form3Window& form3, QWidget& form4, ManualWindow& manual);

/// What the heading of the manual that helps with what is in work holds.
QString manual_heading(const Program& program);

} // namespace tarvik
