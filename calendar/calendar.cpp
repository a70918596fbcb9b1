#include "calendar/calendar.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace tarvik {

namespace {

/// A date of digits alone gets hyphens behind the year and the month.
void give_hyphens(Text& date)
{
    if (date.find_first_of(U"-./\\") == Text::npos)
        date = mid(date, 1, 4).str() + U"-" + mid(date, 5, 2) + U"-" + mid(date, 7);
}

/// What may stand in a date where its hyphens do.
constexpr auto is_other_separator = [](char32_t c) { return c == U'.' || c == U'/' || c == U'\\'; };

/// A day behind the last of its month counts on into the next one.
double day_number(double year, double month, double day)
{
    const auto month_number = static_cast<int>(std::clamp(month, 1.0, 12.0));
    const std::chrono::sys_days first = std::chrono::year(static_cast<int>(year)) / month_number / 1;
    return static_cast<double>(first.time_since_epoch().count()) + day - 1;
}

} // namespace

Text dsx(Text& date)
{
    constexpr std::size_t least_length = 8;
    if (date.size() < least_length) return U"error";
    give_hyphens(date);
    Text hyphened = date;
    std::ranges::replace_if(hyphened, is_other_separator, U'-');
    return hyphened;
}

Text xsd(Text& date)
{
    give_hyphens(date);
    Text compact = date;
    std::erase_if(compact, is_other_separator);
    return compact;
}

std::optional<double> day_of(TextView date)
{
    std::array<unsigned, 3> parts{}, digits{};
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
    const std::chrono::year_month_day named(std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                            std::chrono::day(day));
    if (year < 1 || !named.ok()) return std::nullopt;
    return std::chrono::sys_days(named).time_since_epoch().count();
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

double steaddaf(double first_year, double first_month, double first_day, double second_year, double second_month,
                double second_day)
{
    return day_number(second_year, second_month, second_day) - day_number(first_year, first_month, first_day);
}

double fenzyfenm(double a, double b)
{
    while (b > 0) {
        const double rest = std::fmod(a, b);
        a = b;
        b = rest;
    }
    return a;
}

double fenmax(double a, double b)
{
    return std::fabs(a - b);
}

double fenmod(double m, double x)
{
    return x - m * std::floor(x / m);
}

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
