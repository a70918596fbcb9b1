#pragma once

#include "playback/session.h"

namespace tarvik {

/// Lets time pass and fires the timers that fall due, in order.
void pass_time(Session& session, VirtualTime span);

/// Lets time pass until none of the batch timers is switched on, which is a ScriptFailure when it takes more than
/// `limit`. The clock then stands at the tick that switched off the last one.
void run_batches(Session& session, VirtualTime limit);

} // namespace tarvik
