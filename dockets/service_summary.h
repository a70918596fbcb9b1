#pragma once

#include "runs/report_commands.h"

/// The summary of all devices of the house's own make in the open report.
namespace tarvik {

/// Fills z9 from the rows of SUF and saves it below outfolder.
void excecopy7(Program& program);

/// "An wodben": its row of the command language. It runs at once.
const ReportCommand& service_summary_command();

} // namespace tarvik
