#pragma once

#include "platform/platform.h"

namespace tarvik {

/// The computer's clock, in its local time.
class SystemClock final : public Clock {
public:
    CalendarTime now() const override;
};

} // namespace tarvik
