#pragma once

#include <optional>
#include <string_view>

namespace tarvik::calculation {

/// The date, the time or both that the text writes, in ASCII and lower case; the Chinese marks of years and so on are
/// '\1' and one of y, m, d, h, n, s. CannotCalculate for a date that countries read differently.
std::optional<double> parse_date(std::string_view text, bool counts_from_1904);

} // namespace tarvik::calculation
