#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// Enter in the page box: prints the workbooks of the locked folder whose names hold the box's text, and moves them to
/// the folder of printed files. The first Enter after a reset locks the folder instead, which the user picks. A file
/// that cannot be printed or moved stays where it is and is reported when the others are done; one that is moved never
/// replaces another of its name.
void print_by_name(Program& program);

} // namespace tarvik
