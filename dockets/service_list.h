#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

/// The bill for all devices of one delivery, as a list.
namespace tarvik {

/// Fills z80 from the rows of SUF and saves it below outfolder.
void excecopy60(Program& program);

/// "An dandocket": its row of the command language and its family of sheets.
const ReportCommand& service_list_command();
const SheetFamily& service_list_family();

} // namespace tarvik
