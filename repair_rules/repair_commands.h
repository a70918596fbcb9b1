#pragma once

#include "runs/report_commands.h"

/// The commands that bring the records of the open report into all sheets of a folder. The user picks any file of the
/// folder; without one nothing happens. A sheet with a line that met a record is saved under outfolder, its name begun
/// with an "A"; the others are written back, changed or not. Files that fail are reported in one message at the
/// end. Without a record no sheet is opened: Failure.
namespace tarvik {

/// Fault and repair texts, part codes, quantities and charges by the rule table of the installation folder, or by the
/// built-in one where there is none. Throws Failure for a table with a mistake; no sheet is opened then.
void excelbijiaok(Program& program);
/// Eight columns of the record, copied.
void excelbijiaop(Program& program);

extern const ReportCommand order_command;
extern const ReportCommand prices_command;

} // namespace tarvik
