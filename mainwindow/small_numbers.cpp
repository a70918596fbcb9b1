#include "mainwindow/mainwindow.h"

#include <algorithm>
#include <array>

namespace tarvik {

double min3to1(double a, double b, double c)
{
    std::array sorted{a, b, c};
    std::ranges::sort(sorted);
    const auto first = std::ranges::find_if(sorted, [](double value) { return value != 0; });
    return first == sorted.end() ? 0 : *first;
}

double min2to1(double a, double b)
{
    return std::min(a, b);
}

double ccnn(TextView text)
{
    if (text.empty()) return 0;
    const auto value = number(text);
    if (!value) throw Failure(U"不是数值：" + text);
    return *value;
}

} // namespace tarvik
