#include "engines/spreadsheets/calculation/dates.h"

#include <cmath>

namespace tarvik::calculation {

namespace {

constexpr double days_to_1904 = 1'462;
constexpr double day_that_never_was = 60; // 1900-02-29

// Days from 1970-01-01 of the Gregorian calendar, by counting years from March on.
long long days_from_civil(int year, int month, int day) noexcept
{
    const long long y = year - (month <= 2 ? 1 : 0);
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const long long year_of_era = y - era * 400;
    const long long day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146'097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year - 719'468;
}

constexpr long long day_zero = -25'569; // 1899-12-30, from which days behind the one that never was count

} // namespace

double day_number(int year, int month, int day, bool counts_from_1904) noexcept
{
    const int months = year * 12 + month - 1;
    const int carried_year = months >= 0 ? months / 12 : (months - 11) / 12;
    const auto days = static_cast<double>(days_from_civil(carried_year, months - carried_year * 12 + 1, 1) - day_zero);
    const double first_of_month = days <= day_that_never_was ? days - 1 : days;
    return first_of_month + day - 1 - (counts_from_1904 ? days_to_1904 : 0);
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
        const long long shifted = static_cast<long long>(day) + (day < day_that_never_was ? 1 : 0) + day_zero + 719'468;
        const long long era = shifted / 146'097;
        const long long day_of_era = shifted - era * 146'097;
        const long long year_of_era =
            (day_of_era - day_of_era / 1'460 + day_of_era / 36'524 - day_of_era / 146'096) / 365;
        const long long day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
        const long long month = (5 * day_of_year + 2) / 153;
        time.day = static_cast<int>(day_of_year - (153 * month + 2) / 5 + 1);
        time.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
        time.year = static_cast<int>(year_of_era + era * 400 + (time.month <= 2 ? 1 : 0));
    }
    return time;
}

bool is_day_number(double number, bool counts_from_1904) noexcept
{
    return number >= 0 && number < last_day + 1 - (counts_from_1904 ? days_to_1904 : 0);
}

int weekday(double number, bool counts_from_1904) noexcept
{
    const auto day = static_cast<long long>(std::floor(number)) + (counts_from_1904 ? 1'462 : 0);
    return static_cast<int>((day + 6) % 7) + 1;
}

bool is_leap_year(int year) noexcept
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int days_of_month(int year, int month) noexcept
{
    if (month == 2) return is_leap_year(year) || year == 1900 ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

} // namespace tarvik::calculation
