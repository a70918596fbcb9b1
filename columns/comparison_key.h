#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// The key p: the date check or the in-field query inside SUF, or with `comp` True a comparison of the two tables, as
/// the user answers. A box that holds no usable number throws Failure and leaves the table pane and `compcount` as they
/// were.
void comparison_key(Program& program);

} // namespace tarvik
