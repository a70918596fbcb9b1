#pragma once

#include "runs/report_commands.h"

/// "An label": the list of models that are to be labelled, in z1.xlsx, with the counts of two reports side by side.
namespace tarvik {

const ReportCommand& label_command();

/// Merges the two blocks of the label list in a workbook that the user picks: a row of the second block whose column 1
/// equals one of the first gives its column 4 to that row and loses columns 1, 2 and 4. A cancelled dialog ends the
/// operation.
void excel1(Program& program);
/// Saves z1.xlsx in outfolder under the day's date.
void excelsaveas(Program& program);

} // namespace tarvik
