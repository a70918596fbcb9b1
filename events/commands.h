#pragma once

#include "runs/batch_runner.h"
#include "runs/report_commands.h"

#include <span>

namespace tarvik {

/// The command language: every report command in the order in which the query box is tested for it.
CommandTable report_commands();
/// What each batch timer works on.
TimerTable batch_timers();

} // namespace tarvik
