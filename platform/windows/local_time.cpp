#include "platform/system_clock.h"

namespace tarvik {

std::tm local_time(std::time_t time)
{
    std::tm local{};
    localtime_s(&local, &time);
    return local;
}

} // namespace tarvik
