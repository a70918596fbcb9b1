#pragma once

#include "mainwindow/mainwindow.h"

/// Numbers that the boxes of the parameter window hold, read at the moment of use.
namespace tarvik {

/// The column in Form3.Text1(index), a whole number from 0 to 180. Throws Failure that names the box.
std::size_t box_column(const Program& program, int index);
/// Any number in that box. Throws Failure that names the box.
double box_number(const Program& program, int index);
/// A position in a text, a whole number of at least `least`. Throws Failure that names the box.
double box_position(const Program& program, int index, double least);

/// The same test for a column that does not come from a box.
std::size_t checked_column(int column);

} // namespace tarvik
