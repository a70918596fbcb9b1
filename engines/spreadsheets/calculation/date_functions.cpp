#include "engines/spreadsheets/calculation/functions.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <unordered_set>

namespace tarvik::calculation {

namespace {

double day_argument(Call& call, std::size_t i)
{
    const double number = call.number(i);
    require(is_day_number(number, call.counts_from_1904()));
    return std::floor(number);
}

// The day alone: a time that rounds up to midnight does not change it.
CalendarTime date_argument(Call& call, std::size_t i)
{
    return calendar_time(day_argument(call, i), call.counts_from_1904());
}

Operand checked_day(double day, Call& call)
{
    require(is_day_number(day, call.counts_from_1904()));
    return Value(day);
}

Operand date(Call& call)
{
    double year = std::trunc(call.number(0));
    const double month = std::trunc(call.number(1)), day = std::trunc(call.number(2));
    if (year >= 0 && year < (call.counts_from_1904() ? 1904 : 1900)) year += 1900;
    require(year >= 1900 && year <= 9999 && std::abs(month) < 1e5 && std::abs(day) < 1e7);
    return checked_day(
        day_number(static_cast<int>(year), static_cast<int>(month), static_cast<int>(day), call.counts_from_1904()),
        call);
}

Operand time(Call& call)
{
    double seconds = 0;
    for (const auto& [i, unit] : {std::pair<std::size_t, double>{0, 3600}, {1, 60}, {2, 1}}) {
        require(std::abs(call.number(i)) <= 32'767);
        seconds += std::trunc(call.number(i)) * unit;
    }
    require(seconds >= 0);
    return Value(std::fmod(seconds, seconds_of_day) / seconds_of_day);
}

double now_number(Call& call)
{
    const CalendarTime now = call.evaluator.source.now();
    const double day = day_number(now.year, now.month, now.day, call.counts_from_1904());
    return day + (now.hour * 3600.0 + now.minute * 60 + now.second) / seconds_of_day;
}

// The first day of the week, of which 1 is Sunday, by the kind of weeks: 11 to 17 name the days from Monday on.
int first_weekday(int kind)
{
    if (kind == 1 || kind == 2) return kind;
    require(kind >= 11 && kind <= 17);
    return kind - 9;
}

Operand weekday_number(Call& call)
{
    const int day = weekday(day_argument(call, 0), call.counts_from_1904());
    const int kind = call.whole(1, 1);
    if (kind == 3) return Value((day + 5) % 7 + 0.0);
    return Value((day - first_weekday(kind) + 7) % 7 + 1.0);
}

// The week that holds the year's first Thursday is its first.
Operand iso_week(Call& call)
{
    const double day = day_argument(call, 0);
    const double thursday = day - (weekday(day, call.counts_from_1904()) + 5) % 7 + 3;
    const int year = calendar_time(std::max(thursday, 0.0), call.counts_from_1904()).year;
    return Value(std::floor((thursday - day_number(year, 1, 1, call.counts_from_1904())) / 7) + 1);
}

Operand week_number(Call& call)
{
    const double day = day_argument(call, 0);
    const int kind = call.whole(1, 1);
    if (kind == 21) return iso_week(call);
    const double new_year = day_number(calendar_time(day, call.counts_from_1904()).year, 1, 1, call.counts_from_1904());
    const int before = (weekday(new_year, call.counts_from_1904()) - first_weekday(kind) + 7) % 7;
    return Value(std::floor((day - new_year + before) / 7) + 1);
}

template <bool to_end>
Operand months_later(Call& call)
{
    const CalendarTime from = date_argument(call, 0);
    const double months = std::trunc(call.number(1));
    require(std::abs(months) < 1e5);
    const double month = from.year * 12.0 + from.month - 1 + months;
    const int year = static_cast<int>(std::floor(month / 12)), of_year = static_cast<int>(month - year * 12.0) + 1;
    require(year >= 1900 && year <= 9999);
    const int last = days_of_month(year, of_year);
    return checked_day(day_number(year, of_year, to_end ? last : std::min(from.day, last), call.counts_from_1904()),
                       call);
}

Operand days_360(Call& call)
{
    const CalendarTime from = date_argument(call, 0), to = date_argument(call, 1);
    const bool is_european = call.truth(2);
    const bool is_end = from.day == days_of_month(from.year, from.month);
    const int first = is_end && !is_european ? 30 : std::min(from.day, 30);
    const int last = is_european || first == 30 ? std::min(to.day, 30) : to.day;
    return Value((to.year - from.year) * 360.0 + (to.month - from.month) * 30.0 + last - first);
}

Operand date_difference(Call& call)
{
    const double first = day_argument(call, 0), last = day_argument(call, 1);
    require(first <= last);
    const CalendarTime from = date_argument(call, 0), to = date_argument(call, 1);
    const bool is_cut = to.day < from.day;
    const int months = (to.year - from.year) * 12 + to.month - from.month - (is_cut ? 1 : 0);
    const auto days_since = [&](int year, int month) {
        return Value(last - day_number(year, month, from.day, call.counts_from_1904()));
    };
    const Text unit = lower(TextView(call.text(2)));
    if (unit == U"d") return Value(last - first);
    if (unit == U"m") return Value(static_cast<double>(months));
    if (unit == U"y") return Value(std::floor(months / 12.0));
    if (unit == U"ym") return Value(static_cast<double>(months % 12));
    if (unit == U"md") return days_since(to.year, to.month - (is_cut ? 1 : 0));
    require(unit == U"yd");
    return days_since(from.year + months / 12, from.month);
}

// The days of the week from Monday on, "1" for those without work.
Text weekend_of(Call& call, const Value& weekend)
{
    if (const auto* const text = std::get_if<Text>(&weekend)) {
        const bool is_week = text->size() == 7 && text->find_first_not_of(U"01") == Text::npos && *text != U"1111111";
        require(is_week, CellError::Value);
        return *text;
    }
    const int kind = static_cast<int>(call.to_number(weekend));
    require((kind >= 1 && kind <= 7) || (kind >= 11 && kind <= 17));
    Text days(7, U'0');
    // 1 is Saturday and Sunday, 2 Sunday and Monday; 11 is Sunday alone.
    const int first = kind < 10 ? kind + 4 : kind - 11 + 6;
    for (int day = first; day <= first + (kind < 10 ? 1 : 0); ++day) days[static_cast<std::size_t>(day % 7)] = U'1';
    return days;
}

// Whether nobody works on a day.
template <bool has_weekend>
std::function<bool(double)> free_days(Call& call)
{
    constexpr std::size_t last = has_weekend ? 3 : 2;
    const Text week = has_weekend && !call.is_missing(2) ? weekend_of(call, call.value(2)) : U"0000011";
    std::unordered_set<double> holidays;
    if (!call.is_missing(last))
        for (const double day : numbers_of(call, last)) holidays.insert(std::floor(day));
    return [week, holidays = std::move(holidays), from_1904 = call.counts_from_1904()](double day) {
        return week[static_cast<std::size_t>((weekday(day, from_1904) + 5) % 7)] == U'1' || holidays.contains(day);
    };
}

template <bool has_weekend>
Operand working_days(Call& call)
{
    double first = day_argument(call, 0), last = day_argument(call, 1);
    const double sign = first > last ? -1 : 1;
    if (first > last) std::swap(first, last);
    const auto is_free = free_days<has_weekend>(call);
    call.evaluator.source.spend(static_cast<std::size_t>(last - first));
    double count = 0;
    for (int day = static_cast<int>(first); day <= static_cast<int>(last); ++day) count += is_free(day) ? 0 : sign;
    return Value(count);
}

template <bool has_weekend>
Operand working_day_later(Call& call)
{
    double day = day_argument(call, 0);
    double left = std::trunc(call.number(1));
    require(std::abs(left) < last_day);
    const auto is_free = free_days<has_weekend>(call);
    call.evaluator.source.spend(static_cast<std::size_t>(std::abs(left)));
    const double step = left < 0 ? -1 : 1;
    while (left != 0) {
        day += step;
        require(is_day_number(day, call.counts_from_1904()));
        if (!is_free(day)) left -= step;
    }
    return Value(day);
}

template <bool is_time>
Operand from_text(Call& call)
{
    const auto number = parse_number(call.text(0), call.counts_from_1904());
    // A plain number is no date, though it stands for one.
    require(number && !tarvik::is_number(call.text(0)), CellError::Value);
    return Value(is_time ? *number - std::floor(*number) : std::floor(*number));
}

template <int CalendarTime::*part>
Operand of_date(Call& call)
{
    return Value(static_cast<double>(date_argument(call, 0).*part));
}

template <int CalendarTime::*part>
Operand of_time(Call& call)
{
    require(is_day_number(call.number(0), call.counts_from_1904()));
    return Value(static_cast<double>(calendar_time(call.number(0), call.counts_from_1904()).*part));
}

constexpr Function table[] = {
    {"DATE", 3, 3, "n", date},
    {"DATEDIF", 3, 3, "nnt", date_difference},
    {"DATEVALUE", 1, 1, "t", from_text<false>},
    {"DAY", 1, 1, "n", of_date<&CalendarTime::day>},
    {"DAYS", 2, 2, "n", [](Call& call) -> Operand { return day_argument(call, 0) - day_argument(call, 1); }},
    {"DAYS360", 2, 3, "nnl", days_360},
    {"EDATE", 2, 2, "n", months_later<false>},
    {"EOMONTH", 2, 2, "n", months_later<true>},
    {"HOUR", 1, 1, "n", of_time<&CalendarTime::hour>},
    {"ISOWEEKNUM", 1, 1, "n", iso_week},
    {"MINUTE", 1, 1, "n", of_time<&CalendarTime::minute>},
    {"MONTH", 1, 1, "n", of_date<&CalendarTime::month>},
    {"NETWORKDAYS", 2, 3, "nnr", working_days<false>},
    {"NETWORKDAYS.INTL", 2, 4, "nnvr", working_days<true>},
    {"NOW", 0, 0, "n", [](Call& call) -> Operand { return Value(now_number(call)); }, true},
    {"SECOND", 1, 1, "n", of_time<&CalendarTime::second>},
    {"TIME", 3, 3, "n", time},
    {"TIMEVALUE", 1, 1, "t", from_text<true>},
    {"TODAY", 0, 0, "n", [](Call& call) -> Operand { return Value(std::floor(now_number(call))); }, true},
    {"WEEKDAY", 1, 2, "n", weekday_number},
    {"WEEKNUM", 1, 2, "n", week_number},
    {"WORKDAY", 2, 3, "nnr", working_day_later<false>},
    {"WORKDAY.INTL", 2, 4, "nnvr", working_day_later<true>},
    {"YEAR", 1, 1, "n", of_date<&CalendarTime::year>},
};
static_assert(std::ranges::is_sorted(table, {}, &Function::name));

} // namespace

constinit const std::span<const Function> date_functions = table;

} // namespace tarvik::calculation
