#include "calendar/calendar.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tarvik {

namespace {

/// A date of digits alone gets hyphens behind the year and the month.
void give_hyphens(Text& date)
{
    if (date.find_first_of(U"-./\\") == Text::npos)
        date = mid(date, 1, 4).str() + U"-" + mid(date, 5, 2) + U"-" + mid(date, 7);
}

} // namespace

Text dsx(Text& date)
{
    constexpr std::size_t least_length = 8;
    if (date.size() < least_length) return U"error";
    give_hyphens(date);
    Text hyphened = date;
    std::ranges::replace_if(
        hyphened, [](char32_t c) { return c == U'.' || c == U'/' || c == U'\\'; }, U'-');
    return hyphened;
}

Text xsd(Text& date)
{
    give_hyphens(date);
    Text compact;
    std::ranges::copy_if(date, std::back_inserter(compact),
                         [](char32_t c) { return c != U'.' && c != U'/' && c != U'\\'; });
    return compact;
}

std::optional<double> day_of(TextView date)
{
    std::array<double, 3> parts{};
    std::array<std::size_t, 3> digits{};
    std::size_t part = 0;
    for (std::size_t i = 0; i < date.size(); ++i) {
        if (date[i] == U'-') {
            if (++part == parts.size()) return std::nullopt;
            continue;
        }
        if (date[i] < U'0' || date[i] > U'9' || ++digits[part] > (part == 0 ? 4 : 2)) return std::nullopt;
        parts[part] = parts[part] * 10 + (date[i] - U'0');
    }
    auto [year, month, day] = parts;
    if (digits[0] == 1 || digits[0] == 2) year += year < 30 ? 2000 : 1900;
    if (digits[0] == 0 || !is_calendar_day(year, month, day)) return std::nullopt;
    return steaddaf(1, 1, 1, year, month, day);
}

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
