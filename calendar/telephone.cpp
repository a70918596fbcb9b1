#include "calendar/calendar.h"

namespace tarvik {

Text telecall(TextView numbers)
{
    const std::size_t slash = instr(numbers, U"/");
    if (slash == 0) return numbers.str();
    if (numbers[0] == U'0') return mid(numbers, slash + 1).str();
    return mid(numbers, 1, slash - 1).str();
}

} // namespace tarvik
