#include "calendar/compact_texts.h"

#include <algorithm>

namespace tarvik {

Text xsd(Text& date)
{
    if (date.find_first_of(U"-./\\") == Text::npos)
        date = mid(date, 1, 4).str() + U"-" + mid(date, 5, 2) + U"-" + mid(date, 7);
    Text compact;
    std::ranges::copy_if(date, std::back_inserter(compact),
                         [](char32_t c) { return c != U'.' && c != U'/' && c != U'\\'; });
    return compact;
}

Text telecall(TextView numbers)
{
    const std::size_t slash = instr(numbers, U"/");
    if (slash == 0) return numbers.str();
    if (numbers[0] == U'0') return mid(numbers, slash + 1).str();
    return mid(numbers, 1, slash - 1).str();
}

} // namespace tarvik
