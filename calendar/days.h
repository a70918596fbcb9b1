#pragma once

namespace tarvik {

/// Days from the first date to the second on the Gregorian calendar; negative if the second is earlier. Months count
/// from 1.
double steaddaf(double first_year, double first_month, double first_day, double second_year, double second_month,
                double second_day);

/// Whether the calendar has that day.
bool is_calendar_day(double year, double month, double day);

/// Greatest common divisor of two positive whole numbers.
double fenzyfenm(double a, double b);

/// The larger number minus the smaller one.
double fenmax(double a, double b);

/// The remainder of x by the divisor m, from 0 to below m for a negative x too.
double fenmod(double m, double x);

} // namespace tarvik
