#pragma once

#include "mainwindow/mainwindow.h"

/// Emptying templates ahead of a run. One that this program left empty and that nobody has changed since is passed
/// over.
namespace tarvik {

/// Empties the body of the label list z1: rows 5 to 500, columns 1 to 10.
void excelce(Program& program);
/// Empties the bodies of the docket templates z2, z3, z5 and z6, in this order: rows 13 to 1000, columns 1 to 10. All
/// four must be there.
void excelce2(Program& program);

} // namespace tarvik
