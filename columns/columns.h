#pragma once

#include "mainwindow/mainwindow.h"

/// What this folder offers. The tables SUF and SUG are made in two steps: a column query (column_query.h) takes the
/// lines of the open document as row texts, and the split cuts them into cells. A table of n rows has its
/// data in rows 0 to n-1 and a closing row n with nothing between its two TABs; columns count from 1. Above the tables
/// stand the statistics (statistics.h), the sort (sort.h), the comparisons, the date check and the
/// in-field query (comparisons.h); the keys that drive them all are in keys.h, the notes window in notes.h.
namespace tarvik {

/// Cuts the row texts of the table that `comp` selects into its cells, columns 1 to 99, and shows them. Cells that a
/// row does not reach and rows above the new count keep what they held. Nothing happens to a table of no rows but that
/// the table pane is emptied.
void devision1(Program& program);

} // namespace tarvik
