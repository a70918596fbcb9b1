#pragma once

#include "platform/text/text.h"

#include <optional>

/// The small date, time and number functions, which know no window. The attendance list (attendance.h), which works on
/// a table, stands above the column engine.
namespace tarvik {

/// The date with hyphens for ".", "/" and "\", or "error" for a text of fewer than 8 characters. A date with no
/// separator at all is given hyphens behind the year and the month, in `date` itself too.
Text dsx(Text& date);

/// The date without its ".", "/" and "\". A date with no separator at all is given hyphens behind the year and the
/// month, in `date` itself too.
Text xsd(Text& date);

/// The day that a date of the form year-month-day names, as a number that rises by 1 a day; nothing for a text that is
/// no date or a day that the calendar does not have. Years of one or two digits lie from 1930 to 2029.
std::optional<double> day_of(TextView date);

/// Days from the first date to the second on the Gregorian calendar; negative if the second is earlier. Months count
/// from 1.
double steaddaf(double first_year, double first_month, double first_day, double second_year, double second_month,
                double second_day);

/// Greatest common divisor of two positive whole numbers.
double fenzyfenm(double a, double b);

/// The larger number minus the smaller one.
double fenmax(double a, double b);

/// The remainder of x by the divisor m, from 0 to below m for a negative x too.
double fenmod(double m, double x);

/// The number rounded to two decimals, half up, as a plain decimal without trailing zeros. Before that, noise far below
/// the third decimal is taken off `value` itself.
Text wct(double& value);

/// The number as a text of 8 characters, filled with blanks on the right; the empty text if it takes 8 or more.
Text wcnum(double value);

/// Seconds since midnight of a text that ends in h:mm:ss or hh:mm:ss; a date may stand in front. 0 for a text with
/// fewer than two ":". Pieces that are no numbers count 0.
double sntime(TextView text);

/// One telephone number of a cell that may hold two with a "/" between: the first, but the second where the first
/// begins with "0".
Text telecall(TextView numbers);

} // namespace tarvik
