#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

/// The report on a device that is beyond repair, as a document with its picture.
namespace tarvik {

/// Fills a report from the first row of SUF and saves it below outfolder; prints it as well when the query box holds
/// the printing command and nothing else. The two flags choose the template; with neither set the report tells the
/// cause too.
void excecopyword(Program& program, bool first_flag, bool second_flag);

/// "An dockword" and, for the printing, "An dockwordp": their row of the command language and their family of sheets.
const ReportCommand& repair_report_command();
const SheetFamily& repair_report_family();

} // namespace tarvik
