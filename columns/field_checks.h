#pragma once

#include "columns/comparison_files.h"

/// The work of the key p inside table SUF, with the parameters of Form3.Text1(0) to Text1(2).
namespace tarvik {

/// Shows the rows whose dates in columns A and B lie more than C days apart. A time of day behind a date is cut from
/// the cell for good, and a compact date gets its hyphens there. A date of fewer than 8 characters ends the check with
/// its message and no view; longer texts that are no dates are passed over and named at the end. A box that holds no
/// column or number throws Failure before anything has changed.
void date_check(Program& program, ComparisonFiles& files);

/// Shows the rows whose field in column Text1(0) holds the text of the query box, each with the piece of the field that
/// Text1(1) and Text1(2) bound. An empty text is found nowhere. The bounds are read when a row is found; a box that
/// holds none throws Failure.
void field_query(Program& program, ComparisonFiles& files);

} // namespace tarvik
