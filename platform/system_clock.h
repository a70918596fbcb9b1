#pragma once

#include "platform/platform.h"

#include <ctime>

namespace tarvik {

/// The computer's local time.
std::tm local_time(std::time_t time);

/// The computer's clock, in its local time.
class SystemClock final : public Clock {
public:
    CalendarTime now() const override;
};

} // namespace tarvik
