#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

/// "An testsesame A" and "B": a copy of a template for each key, filled as the design in the designer's boxes says.
namespace tarvik {

/// Makes the report of the key at hand from its rows in SUF. Nothing happens when the query box holds neither command
/// any more.
void excecopy8(Program& program);

const ReportCommand& template_command_a();
const ReportCommand& template_command_b();
const SheetFamily& template_family();

} // namespace tarvik
