#include "platform/platform.h"

#include <ctime>

namespace tarvik {

namespace {

Text digits(int value, std::size_t least)
{
    Text text = number_text(value);
    return text.size() < least ? Text(least - text.size(), U'0') + text : text;
}

} // namespace

CalendarTime SystemClock::now() const
{
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

Text time_of_day(const CalendarTime& time)
{
    return digits(time.hour, 1) + U":" + digits(time.minute, 2) + U":" + digits(time.second, 2);
}

Text date_text(const CalendarTime& time)
{
    return digits(time.year, 4) + U"-" + digits(time.month, 2) + U"-" + digits(time.day, 2);
}

std::string_view version() noexcept
{
    return TARVIK_VERSION;
}

} // namespace tarvik
