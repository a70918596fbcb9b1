#pragma once

#include "calendar/date_text.h"
#include "calendar/days.h"
#include "calendar/numbers.h"
#include "calendar/seconds_of_day.h"
#include "calendar/telephone.h"

/// What this folder offers to everybody: the small date, time and number functions, which know no window. The
/// attendance list (attendance.h), which works on a table, stands above the column engine.
