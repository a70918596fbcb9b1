#pragma once

#include "mainwindow/control.h"

namespace tarvik {

/// The report designer. Its boxes carry a design, visible or not.
struct Form4 {
    explicit Form4(const ModelListeners& listeners);

    Window window;
    ControlArray<TextBox> Text1, Text2; ///< 0 to 49: targets in the spreadsheet, sources in SUF
    TextBox Text3;                      ///< query text
    TextBox Text4;                      ///< key column
    Control Command1, Command2;
    Control Frame1, Frame2, Frame3;
    Control Label1, Label2, Label3, Label4, Label5;
};

/// Gives the boxes the texts of the window's design, as a window has that was just loaded.
void load_design_texts(Form4& form4);

} // namespace tarvik
