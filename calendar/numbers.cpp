#include "calendar/calendar.h"

#include <cmath>

namespace tarvik {

Text wct(double& value)
{
    const double thousandths = std::floor(1000 * value);
    const double noise = std::fabs(1000 * value - thousandths);
    if (noise < 0.00002) value = thousandths / 1000;
    if (noise > 0.99988) value = thousandths / 1000 + 0.001;

    const double whole = std::floor(value);
    const double fraction = std::fabs(value - whole);
    if (fraction < 0.000001) value = whole;
    if (fraction > 0.999998477) value = whole + 1;

    const double a = std::floor(1000 * value);
    double b = std::floor(100 * value);
    if (std::fabs(a - 10 * b) >= 5) b += 1;
    return number_text(b / 100);
}

Text wcnum(double value)
{
    constexpr std::size_t width = 8;
    Text text = number_text(value);
    if (text.size() >= width) return {};
    text.resize(width, U' ');
    return text;
}

Text telecall(TextView numbers)
{
    const std::size_t slash = instr(numbers, U"/");
    if (slash == 0) return numbers.str();
    if (numbers[0] == U'0') return mid(numbers, slash + 1).str();
    return mid(numbers, 1, slash - 1).str();
}

} // namespace tarvik
