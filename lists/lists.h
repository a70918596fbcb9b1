#pragma once

#include "runs/report_commands.h"

namespace tarvik {

/// "An statistic": writes the text of the document pane into 3150.txt of the installation folder, a record for each
/// character: the character, TAB, "*", its position counting from 1, CR, and the line end. Throws Failure when the file
/// cannot be written; the old one then stays.
void list_characters(Program& program);

/// "An label": the list of models that are to be labelled, in z1.xlsx, with the counts of two reports side by side.
extern const ReportCommand label_command;
/// Merges the two blocks of the label list in a workbook that the user picks: a row of the second block whose column 1
/// equals one of the first gives its column 4 to that row and loses columns 1, 2 and 4. A cancelled dialog ends the
/// operation.
void excel1(Program& program);

} // namespace tarvik
