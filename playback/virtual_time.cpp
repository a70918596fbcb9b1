#include "playback/virtual_time.h"

#include "platform/system_clock.h"

#include <algorithm>
#include <tuple>

namespace tarvik {

using namespace std::chrono;

namespace {

constexpr std::string_view pattern = "dddd-dd-dd dd:dd:dd";

bool has_form(std::string_view text)
{
    return std::ranges::equal(text, pattern, [](char character, char wanted) {
        return wanted == 'd' ? character >= '0' && character <= '9' : character == wanted;
    });
}

int digits(std::string_view text, std::size_t from, std::size_t count)
{
    int value = 0;
    for (const char digit : text.substr(from, count)) value = value * 10 + (digit - '0');
    return value;
}

VirtualTime interval(const Timer& timer)
{
    return std::chrono::milliseconds(timer.interval());
}

} // namespace

CalendarTime VirtualClock::now() const
{
    const local_seconds time = start_ + floor<seconds>(elapsed_);
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
    if (!has_form(text)) return std::nullopt;
    const year_month_day date(year(digits(text, 0, 4)), month(static_cast<unsigned>(digits(text, 5, 2))),
                              day(static_cast<unsigned>(digits(text, 8, 2))));
    const int hour = digits(text, 11, 2), minute = digits(text, 14, 2), second = digits(text, 17, 2);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return local_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

local_seconds local_time_now()
{
    const CalendarTime now = SystemClock().now();
    const year_month_day date(year(now.year), month(static_cast<unsigned>(now.month)),
                              day(static_cast<unsigned>(now.day)));
    return local_days(date) + hours(now.hour) + minutes(now.minute) + seconds(now.second);
}

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
