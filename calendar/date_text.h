#pragma once

#include "platform/text/text.h"

#include <optional>

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

} // namespace tarvik
