#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// Esc: takes the distinct lines of the open document that hold the text of the query box as the rows of the table
/// that `comp` selects, and says so.
void column_query(Program& program);

/// The same for a given text and without the closing message; the query box must hold some text all the same. Gives
/// the number of distinct rows: 0 when the scan did not run or when there were more rows than a table holds.
double query1(Program& program, TextView text);

} // namespace tarvik
