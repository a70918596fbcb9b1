#pragma once

#include "mainwindow/control.h"
#include "platform/platform.h"

#include <chrono>
#include <map>
#include <optional>
#include <string_view>

namespace tarvik {

/// Script seconds are decimal numbers, so the clock counts finer than the timers.
using VirtualTime = std::chrono::microseconds;

/// A clock that stands still until somebody lets time pass.
class VirtualClock final : public Clock {
public:
    explicit VirtualClock(std::chrono::local_seconds start) : start_(start) {}

    CalendarTime now() const override;
    /// The time since the start.
    VirtualTime elapsed() const { return elapsed_; }
    void set_elapsed(VirtualTime elapsed) { elapsed_ = elapsed; }

private:
    std::chrono::local_seconds start_;
    VirtualTime elapsed_{0};
};

/// Reads "YYYY-MM-DD hh:mm:ss"; nothing when the text is no such time.
std::optional<std::chrono::local_seconds> parse_time(std::string_view text);
/// The time that the system's clock shows at this place.
std::chrono::local_seconds local_time_now();

/// When the main window's timers fall due on the virtual clock. A timer counts from the moment at which it was switched
/// on; switched on again, it counts anew.
class VirtualTimers {
public:
    explicit VirtualTimers(const VirtualClock& clock) : clock_(clock) {}

    /// To be called when a timer was switched on or off or has got another interval; other controls are passed over.
    void changed(Control& control);

    struct Due {
        Timer* timer;
        VirtualTime at;
    };
    /// The timer that falls due next, by time, then by name and index; nothing when none runs.
    std::optional<Due> next() const;
    /// Takes note that the timer has fallen due; it goes on with its next interval.
    void fired(Timer& timer);

private:
    const VirtualClock& clock_;
    std::map<Timer*, VirtualTime> due_; ///< of those that run
};

} // namespace tarvik
