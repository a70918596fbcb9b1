#pragma once

#include "platform/platform.h"

/// Days as workbooks count them. Day 1 is the first of 1900, which has a 29th of February here; or day 0 the first of
/// 1904. The fraction is the time of day.
namespace tarvik::calculation {

inline constexpr int seconds_of_day = 86'400;
inline constexpr double last_day = 2'958'465; ///< the end of 9999, counted from 1900

/// The day's number; the month and the day may lie outside of the year and the month. Whole numbers.
double day_number(int year, int month, int day, bool counts_from_1904) noexcept;
/// Rounded to seconds. The number lies from 0 to the end of 9999; day 0 is the 0th of January 1900.
CalendarTime calendar_time(double number, bool counts_from_1904) noexcept;
bool is_day_number(double number, bool counts_from_1904) noexcept;
/// 1 is Sunday.
int weekday(double number, bool counts_from_1904) noexcept;
int days_of_month(int year, int month) noexcept;

} // namespace tarvik::calculation
