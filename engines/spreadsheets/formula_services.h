#pragma once

#include "platform/system_clock.h"

#include <functional>
#include <string>
#include <string_view>

namespace tarvik {

/// What the formulas of workbooks need from outside.
struct FormulaServices {
    std::function<CalendarTime()> now = [] { return SystemClock().now(); };
    /// A workbook package with every formula calculated by the suite at hand; throws Damage. None without one.
    std::function<std::string(std::string_view package)> recalculate{};
};

} // namespace tarvik
