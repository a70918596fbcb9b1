#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

/// The docket whose cells a design of the report designer tells.
namespace tarvik {

/// Fills one docket from the rows of SUF, which are the key's records in 3138.txt, and saves it below outfolder. The
/// design's list goes first, then its single items, then what every docket holds. A cell of the design in row or column
/// 0, whose source is empty, or whose box holds no whole number, is passed over.
void excecopys(Program& program);

/// "An testdocket": its row of the command language and its family of sheets.
const ReportCommand& test_docket_command();
const SheetFamily& test_docket_family();

} // namespace tarvik
