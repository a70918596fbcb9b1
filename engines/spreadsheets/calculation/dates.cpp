#include "engines/spreadsheets/calculation/dates.h"

#include <chrono>
#include <cmath>

namespace tarvik::calculation {

namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

constexpr double days_to_1904 = 1'462;
constexpr double day_that_never_was = 60;      // 1900-02-29
constexpr sys_days day_zero = 1899y / 12 / 30; // from which the days behind that one count

} // namespace

double day_number(int year, int month, int day, bool counts_from_1904) noexcept
{
    const sys_days first_of_month = std::chrono::year(year) / 1 / 1 + std::chrono::months(month - 1);
    const auto days = static_cast<double>((first_of_month - day_zero).count());
    return (days <= day_that_never_was ? days - 1 : days) + day - 1 - (counts_from_1904 ? days_to_1904 : 0);
}

CalendarTime calendar_time(double number, bool counts_from_1904) noexcept
{
    double day = std::floor(number);
    auto second = static_cast<int>(std::floor((number - day) * seconds_of_day + 0.5));
    if (second == seconds_of_day) {
        day += 1;
        second = 0;
    }
    if (counts_from_1904) day += days_to_1904;
    CalendarTime time{1900, 1, 0, second / 3600, second / 60 % 60, second % 60};
    if (day == day_that_never_was) {
        time.month = 2;
        time.day = 29;
    } else if (day > 0) {
        const int counted = static_cast<int>(day) + (day < day_that_never_was ? 1 : 0);
        const std::chrono::year_month_day date(day_zero + std::chrono::days(counted));
        time.year = static_cast<int>(date.year());
        time.month = static_cast<int>(static_cast<unsigned>(date.month()));
        time.day = static_cast<int>(static_cast<unsigned>(date.day()));
    }
    return time;
}

bool is_day_number(double number, bool counts_from_1904) noexcept
{
    return number >= 0 && number < last_day + 1 - (counts_from_1904 ? days_to_1904 : 0);
}

int weekday(double number, bool counts_from_1904) noexcept
{
    const auto day = static_cast<long long>(std::floor(number) + (counts_from_1904 ? days_to_1904 : 0));
    return static_cast<int>((day + 6) % 7) + 1;
}

int days_of_month(int year, int month) noexcept
{
    if (year == 1900 && month == 2) return 29;
    const auto last = std::chrono::year(year) / month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

} // namespace tarvik::calculation
