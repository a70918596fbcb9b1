#include "playback/virtual_timers.h"

#include <algorithm>
#include <tuple>

namespace tarvik {

namespace {

VirtualTime interval(const Timer& timer)
{
    return std::chrono::milliseconds(timer.interval());
}

} // namespace

VirtualTimers::VirtualTimers(Form1& form1, const VirtualClock& clock) : clock_(clock)
{
    for (auto& [index, timer] : form1.Timer1) entries_.push_back({&timer, {}});
    for (Timer* timer : form1.batch_timers()) {
        entries_.push_back({timer, {}});
        batch_.push_back(timer);
    }
    std::ranges::sort(entries_, {},
                      [](const Entry& entry) { return std::tuple(entry.timer->name(), entry.timer->index()); });
    for (const Entry& entry : entries_) changed(*entry.timer);
}

void VirtualTimers::changed(const Control& control)
{
    for (Entry& entry : entries_) {
        if (entry.timer != &control) continue;
        entry.due.reset();
        if (entry.timer->enabled() && entry.timer->interval() > 0)
            entry.due = clock_.elapsed() + interval(*entry.timer);
    }
}

std::optional<VirtualTimers::Due> VirtualTimers::next() const
{
    std::optional<Due> first;
    for (const Entry& entry : entries_)
        if (entry.due && (!first || *entry.due < first->at)) first.emplace(Due{entry.timer, *entry.due});
    return first;
}

void VirtualTimers::fired(const Timer& timer)
{
    for (Entry& entry : entries_)
        if (entry.timer == &timer && entry.due) *entry.due += interval(timer);
}

bool VirtualTimers::batch_runs() const
{
    return std::ranges::any_of(batch_, &Timer::enabled);
}

} // namespace tarvik
