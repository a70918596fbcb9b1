#pragma once

#include "mainwindow/control.h"

namespace tarvik {

/// The window of column numbers and notes, which stays beside the main window.
struct Form3 {
    explicit Form3(const ModelListeners& listeners);

    Window window;
    ControlArray<TextBox> Text1;    ///< 0 to 2 date check and in-field query, 3 and 4 comparison, 5 sort and statistics
    ControlArray<Control> Label1;   ///< help texts
    TextBox Text2;                  ///< notes
    ControlArray<Control> Command1; ///< 0 确认, 1 说明
};

} // namespace tarvik
