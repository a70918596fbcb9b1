#pragma once

#include "runs/report_commands.h"

/// The sheets that customers get, made of the department's reports: for each the operation that fills one from the rows
/// of SUF, which a scan has made, and saves it below outfolder; its row of the command language.
namespace tarvik {

/// "An docket": for each goods receipt how many devices came back, and a list of those out of warranty. `first` to
/// `last` are the columns of SUF that make the list. The layout goes by the query box: the docket's own as long as the
/// box holds the command, else the older one.
void excecopy(Program& program, int first, int last);
extern const ReportCommand docket_command;

/// "An testdocket": the docket whose cells a design of the report designer names. The design's list goes first, then
/// its single items, then what every docket holds. A cell of the design in row or column 0, whose source is empty, or
/// whose box holds no whole number, is passed over.
void excecopys(Program& program);
extern const ReportCommand test_docket_command;

/// "An bendocket": the bill for one device of the house's own make, from the first row of SUF and the device's line in
/// 3137.txt. A device that 3137.txt does not hold is reported and ends the run.
void excecopy6(Program& program);
extern const ReportCommand service_bill_command;

/// "An dandocket": the bill for all devices of one delivery, as a list.
void excecopy60(Program& program);
extern const ReportCommand service_list_command;

/// "An wodben": the summary of all devices of the house's own make in the open report. It runs at once.
void excecopy7(Program& program);
extern const ReportCommand service_summary_command;

/// "An dockword" and, for the printing, "An dockwordp": the report on a device that is beyond repair, as a document
/// with its picture, from the first row of SUF. It is printed as well when the query box holds the printing command and
/// nothing else. The two flags choose the template; with neither set the report names the cause too.
void excecopyword(Program& program, bool first_flag, bool second_flag);
extern const ReportCommand repair_report_command;

} // namespace tarvik
