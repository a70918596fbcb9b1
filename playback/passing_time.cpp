#include "playback/passing_time.h"

#include "playback/script.h"

namespace tarvik {

namespace {

// Fires the next timer that falls due until `end`; gives whether there was one.
bool fire_next(Session& session, VirtualTime end)
{
    const auto due = session.timers.next();
    if (!due || due->at > end || session.program.ended) return false;
    session.clock.set_elapsed(due->at);
    session.timers.fired(*due->timer);
    session.user.tick(*due->timer);
    return true;
}

} // namespace

void pass_time(Session& session, VirtualTime span)
{
    const VirtualTime end = session.clock.elapsed() + span;
    while (fire_next(session, end)) {
    }
    session.clock.set_elapsed(end);
}

void run_batches(Session& session, VirtualTime limit)
{
    const VirtualTime end = session.clock.elapsed() + limit;
    while (session.timers.batch_runs())
        if (!fire_next(session, end)) throw ScriptFailure("the run has not ended in the time that it was given");
}

} // namespace tarvik
