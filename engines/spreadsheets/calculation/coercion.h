#pragma once

#include "engines/spreadsheets/calculation/formula.h"

/// From one kind of value to another, and two values to one, as formulas do it.
namespace tarvik::calculation {

inline constexpr std::size_t longest_text = 32'767; ///< of a cell

/// The number that the text writes: a decimal number, with thousands, percent, currency or an exponent, a date or
/// a time. CannotCalculate for a fraction ("1 1/2") and a date that countries read differently ("1/2/2020").
std::optional<double> parse_number(TextView text, bool counts_from_1904);
/// A number, or the error that stands in its place. Nothing is 0, a truth value 0 or 1.
Value to_number(const Value& value, bool counts_from_1904);
/// A text or an error. A number has at most 15 digits.
Value to_text(const Value& value);
/// A truth value or an error.
Value to_truth(const Value& value);

/// The number in the form that a text takes on: at most 15 digits, an exponent from 1E+15 on and below 0.0001.
Text plain_text(double number);
/// As a cell without a format shows it: as many digits as 11 characters hold.
Text general_text(double number);
/// With so many decimals, at most 127.
Text decimal_text(double number, int decimals);

/// The number with the digits that formulas know, which are 15.
double to_15_digits(double number) noexcept;
/// Rounded half away from zero at that many decimals, which may be negative, by the digits that formulas know; with 0
/// for the half cut off there.
double rounded(double number, int decimals, double half = 0.5) noexcept;

/// -1, 0 or 1: the order of operators and sorted columns. Numbers are less than texts, these than truth values; nothing
/// is 0, "" or FALSE. Texts compare without case. CannotCalculate for texts whose order depends on the language.
int compare(const Value& a, const Value& b);
/// Whether they are of one kind and equal; texts without case, numbers to their last bit.
bool is_equal(const Value& a, const Value& b);

/// Whether the comparison holds for values in that order, which is negative, 0 or positive.
bool holds(Operator comparison, int order) noexcept;
/// The result of an operator for two values.
Value operate(Operator how, const Value& a, const Value& b, bool counts_from_1904);
/// A sum or difference that is nothing but the rest of its operands' rounding is 0.
double without_rest(double result, double operand) noexcept;

// Days as workbooks count them. Day 1 is the first of 1900, which has a 29th of February here; or day 0 the first of
// 1904. The fraction is the time of day.

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
