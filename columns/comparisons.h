#pragma once

#include "columns/comparison_files.h"

/// The comparisons of a column of SUF (`sufcol`) with a column of SUG (`sugcol`, the box Form3.Text1(4) at this very
/// moment). A box that holds no column throws Failure.
namespace tarvik {

/// Each value of the one column with each of the other: shows the rows of SUF whose value SUG has too, or with `notcap`
/// the rows that have no such value, in which case the matched row texts of SUF are emptied for good.
void cross_comparison(Program& program, ComparisonFiles& files);

/// Row by row: shows the rows with equal or with different values, as the user chooses. With `notcap` True it refuses,
/// sets `notcap` and `comp` False and empties the tables.
void parallel_comparison(Program& program, ComparisonFiles& files);

/// The rule before any work on two tables: with fewer rows in SUF than in SUG it says so, sets `comp` False, empties
/// the tables and gives True.
bool refuse_shorter_suf(Program& program);

/// Empties both tables up to row `sugrows`, columns 0 to 100, and clears the scratch files again.
void reset_tables(Program& program);

} // namespace tarvik
