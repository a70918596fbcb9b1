#pragma once

#include "mainwindow/form1.h"
#include "playback/virtual_clock.h"

#include <optional>
#include <vector>

namespace tarvik {

/// When the main window's timers fall due on the virtual clock. A timer counts from the moment at which it was switched
/// on; switched on again, it counts anew.
class VirtualTimers {
public:
    VirtualTimers(Form1& form1, const VirtualClock& clock);

    /// To be called when a timer was switched on or off or has got another interval; other controls are passed over.
    void changed(const Control& control);

    struct Due {
        Timer* timer;
        VirtualTime at;
    };
    /// The timer that falls due next, by time, then by name and index; nothing when none runs.
    std::optional<Due> next() const;
    /// Takes note that the timer has fallen due; it goes on with its next interval.
    void fired(const Timer& timer);

    /// Whether any of the timers of the batch runner is switched on.
    bool batch_runs() const;

private:
    struct Entry {
        Timer* timer;
        std::optional<VirtualTime> due;
    };
    std::vector<Entry> entries_;
    std::vector<const Timer*> batch_;
    const VirtualClock& clock_;
};

} // namespace tarvik
