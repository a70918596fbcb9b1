#pragma once

#include "desktop/form_layout.h"
#include "mainwindow/form1.h"

namespace tarvik {

/// Where a control of the main window shows. The model's places stand, but for two that would hide something: the
/// number box ends above the "◎" at its corner, and a row of frames that runs over the window's edge is pushed back
/// inside.
Place fitted_place(const Form1& form1, const Control& control);

} // namespace tarvik
