#pragma once

#include "engines/spreadsheets/calculation/value.h"

#include <optional>

/// Numbers and texts as a number format shows them. Names of months and days are English.
namespace tarvik::calculation {

/// Nothing for a date that there is not. CannotCalculate for what this language has no knowledge of: fractions, other
/// calendars, Chinese digits.
std::optional<Text> format_number(double number, TextView format, bool counts_from_1904);
/// The format's section for texts, or the text itself.
Text format_text(TextView text, TextView format);

} // namespace tarvik::calculation
