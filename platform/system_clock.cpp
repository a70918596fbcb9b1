#include "platform/system_clock.h"

namespace tarvik {

CalendarTime SystemClock::now() const
{
    const std::tm local = local_time(std::time(nullptr));
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

} // namespace tarvik
