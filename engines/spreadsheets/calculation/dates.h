#pragma once

#include "engines/spreadsheets/calculation/formula.h"

/// Days as workbooks count them, and numbers, days and times as texts write them. Day 1 is the first of 1900, which has
/// a 29th of February here; or day 0 the first of 1904. The fraction is the time of day.
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

/// The number that the text writes: a decimal number, with thousands, percent, currency or an exponent, a date or
/// a time. CannotCalculate for a fraction ("1 1/2") and a date that countries read differently ("1/2/2020").
std::optional<double> parse_number(TextView text, bool counts_from_1904);

} // namespace tarvik::calculation
