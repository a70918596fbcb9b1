#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

/// "An tomation" and "An Sesame Open": files that exist already are picked by the key in their names and filled as the
/// design says; copies of them go to the output folder.
namespace tarvik {

/// One pass over the folder for the key at hand. A file that fails is passed over: a pass of its own tells it at the
/// end, a run when it is over. A cancelled choice of the folder ends the pass, and the run with it.
void excelbijiaopt(Program& program);

const ReportCommand& tomation_command();
const ReportCommand& sesame_open_command();
const SheetFamily& tomation_family();

} // namespace tarvik
