#include "calendar/calendar.h"

namespace tarvik {

double sntime(TextView text)
{
    const std::size_t first = instr(text, U":");
    const std::size_t second = first == 0 ? 0 : instr(text, U":", first + 1);
    if (second == 0) return 0;
    // A blank in front of a one-digit hour is read with it.
    const TextView hour = first == 2 ? mid(text, 1, 1) : first > 2 ? mid(text, first - 2, 2) : TextView();
    return leading_number(hour) * 3600 + leading_number(mid(text, second - 2, 2)) * 60 +
           leading_number(mid(text, second + 1, 2));
}

} // namespace tarvik
