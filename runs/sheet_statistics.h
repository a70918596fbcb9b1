#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// The statistics of a column of SUF, shown without a message and written into the first sheet of z1.xlsx: each value
/// in upper case at `row` and column `sheetcol`, its count as text `offset` columns to the right. Rows and columns of
/// the sheet count from 1; `row` comes back raised by the number of values, which `sheetrow` keeps too. Does nothing
/// before the first column query or while `comp` is True. Throws Failure, with z1.xlsx as it was.
void statistics(Program& program, int column, int& row, int sheetcol, int offset);

} // namespace tarvik
