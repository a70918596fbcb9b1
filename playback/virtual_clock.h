#pragma once

#include "platform/platform.h"

#include <chrono>
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

} // namespace tarvik
