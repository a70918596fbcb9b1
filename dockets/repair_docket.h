#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

/// The docket that a customer gets for each goods receipt: how many devices came back, and a list of those out of
/// warranty.
namespace tarvik {

/// Fills one docket from the rows of SUF, which are one receipt's records in 3138.txt, and saves it below outfolder.
/// `first` to `last` are the columns of SUF that make the list. The layout goes by the query box: the docket's own as
/// long as the box holds the command, else the older one.
void excecopy(Program& program, int first, int last);

/// "An docket": its row of the command language and its family of sheets.
const ReportCommand& docket_command();
const SheetFamily& docket_family();

} // namespace tarvik
