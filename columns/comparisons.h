#pragma once

#include "mainwindow/mainwindow.h"

/// The key p and its work: inside SUF the date check and the in-field query, with the parameters of Form3.Text1(0) to
/// Text1(2), and the comparisons of a column of SUF (`sufcol`) with a column of SUG (`sugcol`, the box Form3.Text1(4)
/// at this very moment). A box that holds no column throws Failure.
namespace tarvik {

/// The key p: the date check or the in-field query inside SUF, or with `comp` True a comparison of the two tables, as
/// the user answers. A box that holds no usable number throws Failure and leaves the table pane and `compcount` as they
/// were.
void comparison_key(Program& program);

/// Shows the rows whose dates in columns A and B lie more than C days apart. A time of day behind a date is cut from
/// the cell for good, and a compact date gets its hyphens there. A date of fewer than 8 characters ends the check with
/// its message and no view; longer texts that are no dates are passed over and named at the end. A box that holds no
/// column or number throws Failure before anything has changed.
void date_check(Program& program);

/// Each value of the one column with each of the other: shows the rows of SUF whose value SUG has too, or with `notcap`
/// the rows that have no such value, in which case the matched row texts of SUF are emptied for good.
void cross_comparison(Program& program);

} // namespace tarvik
