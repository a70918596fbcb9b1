#include "calendar/calendar.h"

#include <cmath>

namespace tarvik {

namespace {

bool is_leap_year(double year)
{
    if (fenzyfenm(4, year) != 4) return false;
    return fenzyfenm(100, year) != 100 || fenzyfenm(400, year) == 400;
}

double days_in_month(double year, int month)
{
    switch (month) {
    case 2: return is_leap_year(year) ? 29 : 28;
    case 4:
    case 6:
    case 9:
    case 11: return 30;
    default: return 31;
    }
}

// Days from the first of January of year 1: whole years by their leap days, months one by one.
double day_number(double year, double month, double day)
{
    const double before = year - 1;
    double days = 365 * before + std::floor(before / 4) - std::floor(before / 100) + std::floor(before / 400);
    for (int m = 1; m < 12 && m < month; ++m) days += days_in_month(year, m);
    return days + day;
}

} // namespace

double steaddaf(double first_year, double first_month, double first_day, double second_year, double second_month,
                double second_day)
{
    return day_number(second_year, second_month, second_day) - day_number(first_year, first_month, first_day);
}

bool is_calendar_day(double year, double month, double day)
{
    return year >= 1 && month >= 1 && month <= 12 && day >= 1 && day <= days_in_month(year, static_cast<int>(month));
}

double fenzyfenm(double a, double b)
{
    while (b > 0) {
        const double rest = std::fmod(a, b);
        a = b;
        b = rest;
    }
    return a;
}

double fenmax(double a, double b)
{
    return std::fabs(a - b);
}

double fenmod(double m, double x)
{
    return x - m * std::floor(x / m);
}

} // namespace tarvik
