#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

/// The bill for one device of the house's own make.
namespace tarvik {

/// Fills z8 from the first row of SUF and the device's line in 3137.txt, and saves it below outfolder. A device that
/// 3137.txt does not hold is told and ends the run.
void excecopy6(Program& program);

/// "An bendocket": its row of the command language and its family of sheets.
const ReportCommand& service_bill_command();
const SheetFamily& service_bill_family();

} // namespace tarvik
