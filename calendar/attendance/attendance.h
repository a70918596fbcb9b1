#pragma once

#include "mainwindow/mainwindow.h"

#include <optional>

namespace tarvik {

/// Stands before the time of the first stamp in each line of the attendance list.
inline constexpr std::u32string_view arrival_label = U"上班打卡：";

/// Reads a clock stamp, "2016-09-22 08:31:45.000", into kqdate, kqtime and kqweekday, and gives its time in hours with
/// two decimals. The hour may have one digit, or a blank for the first. A day behind the last of its month counts on
/// into the next one. A stamp that cannot be cut so, or whose month is none, changes nothing and gives nothing.
std::optional<double> kqtest(Program& program, TextView stamp);

/// `An kqtest`: the day-by-day attendance list of one department, from the first and the last stamp of each row.
void an_kqtest(Program& program);

} // namespace tarvik
