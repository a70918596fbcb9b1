#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

/// "An Excelfile": the key cells of many spreadsheets are looked up in the table, and the rows that they equal fill
/// other cells of those spreadsheets.
namespace tarvik {

/// One pass over the folder: every worksheet of every file, each key cell against each row of SUF. A match counts into
/// sheetno, and each file is saved in the output folder with an "A" ahead of its name. A file that fails is passed
/// over, its matches do not count, and it is told at the end. Tells how many rows have found no cell; nothing more
/// happens when the user cancels the choice of the folder.
void qqrs(Program& program);

const ReportCommand& excelfile_command();
const OwnTick& excelfile_tick();

} // namespace tarvik
