#pragma once

#include "runs/report_commands.h"

/// "An keptfile": moves the files whose names hold values of a column of the open document to the output folder.
namespace tarvik {

/// The values are those of the column in Form3.Text1(5). A file goes with the first value that its name holds; a name
/// that the output folder has already gets a number. Values that found no file are listed in nofile.txt. A file that
/// cannot be moved is passed over and told at the end. A cancelled choice of the folder ends the operation.
void excelbijiaop88(Program& program);

const ReportCommand& keptfile_command();

} // namespace tarvik
