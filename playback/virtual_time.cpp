#include "playback/player.h"

#include "platform/platform.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <tuple>

namespace tarvik {

using namespace std::chrono;

namespace {

year_month_day date_of(const CalendarTime& time)
{
    return {year(time.year), month(static_cast<unsigned>(time.month)), day(static_cast<unsigned>(time.day))};
}

local_seconds time_of(const CalendarTime& time)
{
    return local_days(date_of(time)) + hours(time.hour) + minutes(time.minute) + seconds(time.second);
}

VirtualTime interval(const Timer& timer)
{
    return std::chrono::milliseconds(timer.interval());
}

} // namespace

CalendarTime VirtualClock::now() const
{
    const local_seconds time = start_ + floor<seconds>(elapsed);
    const local_days midnight = floor<days>(time);
    const year_month_day date(midnight);
    const hh_mm_ss time_of_day(time - midnight);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time_of_day.hours().count()),
            static_cast<int>(time_of_day.minutes().count()),
            static_cast<int>(time_of_day.seconds().count())};
}

std::optional<local_seconds> parse_time(std::string_view text)
{
    constexpr const char* form = "%Y-%m-%d %H:%M:%S";
    std::tm read{};
    std::istringstream given{std::string(text)};
    std::ostringstream written; // a time may be read from other forms
    given >> std::get_time(&read, form);
    written << std::put_time(&read, form);
    const CalendarTime time{read.tm_year + 1900, read.tm_mon + 1, read.tm_mday, read.tm_hour, read.tm_min, read.tm_sec};
    if (!given || written.str() != text || !date_of(time).ok() || time.second > 59) return std::nullopt;
    return time_of(time);
}

local_seconds local_time_now()
{
    return time_of(SystemClock().now());
}

void VirtualTimers::changed(Control& control)
{
    auto* const timer = dynamic_cast<Timer*>(&control);
    if (!timer) return;
    due_.erase(timer);
    if (timer->enabled() && timer->interval() > 0) due_[timer] = clock_.elapsed + interval(*timer);
}

std::optional<VirtualTimers::Due> VirtualTimers::next() const
{
    if (due_.empty()) return std::nullopt;
    const auto& [timer, at] = *std::ranges::min_element(
        due_, {}, [](const auto& due) { return std::tuple(due.second, due.first->name(), due.first->index()); });
    return Due{timer, at};
}

void VirtualTimers::fired(Timer& timer)
{
    if (const auto due = due_.find(&timer); due != due_.end()) due->second += interval(timer);
}

} // namespace tarvik
