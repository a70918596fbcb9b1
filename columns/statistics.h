#pragma once

#include "mainwindow/mainwindow.h"

/// The distinct values of a column of SUF with their counts, over as many rows as the table last queried or split has.
/// All forms leave `distinct`, `distinctn` and `colcopy` as the count made them and show the view with its total. A
/// column outside 0 to 180 throws Failure before anything has changed.
namespace tarvik {

/// The key "/": the column stands in Form3.Text1(5) and is told first. Refuses while `comp` selects SUG.
void column_statistics(Program& program);

/// Without a message, and with the values as the keys of a report run: fills `keylist` and sets `keycount`. More than
/// `keylist` has room for are told, and the first ones kept. Does nothing before the first column query or while `comp`
/// is True.
void statistitt(Program& program, int column);

/// Without a message, and with each value in upper case and its count as text in a sheet of z1.xlsx: at `row` and
/// column `sheetcol`, and `offset` columns to the right. Rows and columns of the sheet count from 1; `row` comes back
/// raised by the number of values, which `sheetrow` keeps too. Does nothing as statistitt() does.
void statistics(Program& program, int column, int& row, int sheetcol, int offset);

} // namespace tarvik
