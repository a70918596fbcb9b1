#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/dates.h"
#include "engines/spreadsheets/calculation/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

namespace tarvik::calculation {

namespace {

double day_argument(Call& call, std::size_t i)
{
    const double number = call.number(i);
    require(is_day_number(number, call.counts_from_1904()));
    return std::floor(number);
}

CalendarTime time_argument(Call& call, std::size_t i)
{
    require(is_day_number(call.number(i), call.counts_from_1904()));
    return calendar_time(call.number(i), call.counts_from_1904());
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

double now_number(Call& call, bool with_time)
{
    const CalendarTime now = call.evaluator().source().now();
    const double day = day_number(now.year, now.month, now.day, call.counts_from_1904());
    if (!with_time) return day;
    return day + (now.hour * 3600.0 + now.minute * 60 + now.second) / seconds_of_day;
}

Operand weekday_number(Call& call)
{
    const int day = weekday(day_argument(call, 0), call.counts_from_1904());
    const int kind = call.whole(1, 1);
    if (kind == 1) return Value(static_cast<double>(day));
    if (kind == 2) return Value(static_cast<double>((day + 5) % 7 + 1));
    if (kind == 3) return Value(static_cast<double>((day + 5) % 7));
    require(kind >= 11 && kind <= 17); // the first day from Monday on
    return Value(static_cast<double>((day + 5 - (kind - 11) + 7) % 7 + 1));
}

// The week that holds the year's first Thursday is its first.
double iso_week(double day, bool counts_from_1904)
{
    const double thursday = day - (weekday(day, counts_from_1904) + 5) % 7 + 3;
    const int year = calendar_time(std::max(thursday, 0.0), counts_from_1904).year;
    return std::floor((thursday - day_number(year, 1, 1, counts_from_1904)) / 7) + 1;
}

Operand week_number(Call& call)
{
    const double day = day_argument(call, 0);
    const int kind = call.whole(1, 1);
    if (kind == 21) return Value(iso_week(day, call.counts_from_1904()));
    require(kind == 1 || kind == 2 || (kind >= 11 && kind <= 17));
    const int first_weekday = kind == 1 || kind == 17 ? 1 : kind == 2 ? 2 : kind - 9; // 1 is Sunday
    const double new_year = day_number(calendar_time(day, call.counts_from_1904()).year, 1, 1, call.counts_from_1904());
    const int before = (weekday(new_year, call.counts_from_1904()) - first_weekday + 7) % 7;
    return Value(std::floor((day - new_year + before) / 7) + 1);
}

double months_later(Call& call, bool to_end)
{
    const CalendarTime from = date_argument(call, 0);
    const double months = std::trunc(call.number(1));
    require(std::abs(months) < 1e5);
    const double month = from.year * 12.0 + from.month - 1 + months;
    const int year = static_cast<int>(std::floor(month / 12)), of_year = static_cast<int>(month - year * 12.0) + 1;
    require(year >= 1900 && year <= 9999);
    const int last = days_of_month(year, of_year);
    return day_number(year, of_year, to_end ? last : std::min(from.day, last), call.counts_from_1904());
}

Operand days_between(Call& call)
{
    return Value(day_argument(call, 0) - day_argument(call, 1));
}

double days_360(const CalendarTime& from, const CalendarTime& to, bool is_european)
{
    int first = from.day, last = to.day;
    if (is_european) {
        first = std::min(first, 30);
        last = std::min(last, 30);
    } else {
        if (first == days_of_month(from.year, from.month)) first = 30;
        if (last == 31 && first >= 30) last = 30;
    }
    return (to.year - from.year) * 360.0 + (to.month - from.month) * 30.0 + last - first;
}

Operand days_360_function(Call& call)
{
    CalendarTime from = date_argument(call, 0), to = date_argument(call, 1);
    const bool is_european = call.truth(2, false);
    if (!is_european && to.day == 31 && from.day < 30 && from.day != days_of_month(from.year, from.month)) {
        to.day = 1; // of the month after it
        ++to.month;
    }
    return Value(days_360(from, to, is_european));
}

bool has_leap_day(double first, double last, const CalendarTime& from, const CalendarTime& to, bool counts_from_1904)
{
    for (int year = from.year; year <= to.year; ++year) {
        if (!is_leap_year(year)) continue;
        const double leap_day = day_number(year, 2, 29, counts_from_1904);
        if (leap_day >= first && leap_day <= last) return true;
    }
    return false;
}

Operand year_fraction(Call& call)
{
    double first = day_argument(call, 0), last = day_argument(call, 1);
    if (first > last) std::swap(first, last);
    const CalendarTime from = calendar_time(first, call.counts_from_1904());
    const CalendarTime to = calendar_time(last, call.counts_from_1904());
    switch (call.whole(2, 0)) {
    case 0: {
        CalendarTime end = to;
        const bool ends_february = from.month == 2 && from.day == days_of_month(from.year, 2);
        if (ends_february && to.month == 2 && to.day == days_of_month(to.year, 2)) end.day = 30;
        CalendarTime begin = from;
        if (!ends_february && begin.day == days_of_month(from.year, from.month) && begin.day > 30) begin.day = 30;
        if (ends_february) begin.day = 30;
        if (end.day == 31 && begin.day >= 30) end.day = 30;
        return Value(((end.year - begin.year) * 360.0 + (end.month - begin.month) * 30.0 + end.day - begin.day) / 360);
    }
    case 1: {
        const bool within_year =
            from.year == to.year ||
            (to.year == from.year + 1 && (to.month < from.month || (to.month == from.month && to.day <= from.day)));
        double year_length = 365;
        if (within_year) {
            const bool is_leap = from.year == to.year ? is_leap_year(from.year)
                                                      : has_leap_day(first, last, from, to, call.counts_from_1904());
            if (is_leap) year_length = 366;
        } else {
            year_length =
                (day_number(to.year + 1, 1, 1, false) - day_number(from.year, 1, 1, false)) / (to.year - from.year + 1);
        }
        return Value((last - first) / year_length);
    }
    case 2: return Value((last - first) / 360);
    case 3: return Value((last - first) / 365);
    case 4: return Value(days_360(from, to, true) / 360);
    default: return Value(CellError::Number);
    }
}

Operand date_difference(Call& call)
{
    const double first = day_argument(call, 0), last = day_argument(call, 1);
    require(first <= last);
    const CalendarTime from = date_argument(call, 0), to = date_argument(call, 1);
    const int months = (to.year - from.year) * 12 + to.month - from.month - (to.day < from.day ? 1 : 0);
    const Text unit = lower(TextView(call.text(2)));
    if (unit == U"d") return Value(last - first);
    if (unit == U"m") return Value(static_cast<double>(months));
    if (unit == U"y") return Value(std::floor(months / 12.0));
    if (unit == U"ym") return Value(static_cast<double>(months % 12));
    if (unit == U"md") {
        if (to.day >= from.day) return Value(static_cast<double>(to.day - from.day));
        return Value(last - day_number(to.year, to.month - 1, from.day, call.counts_from_1904()));
    }
    require(unit == U"yd");
    const int year = to.month < from.month || (to.month == from.month && to.day < from.day) ? to.year - 1 : to.year;
    return Value(last - day_number(year, from.month, from.day, call.counts_from_1904()));
}

struct FreeDays {
    std::array<bool, 7> of_week{}; // from Monday
    std::unordered_set<long long> others;

    bool has(double day, bool counts_from_1904) const
    {
        return of_week.at(static_cast<std::size_t>((weekday(day, counts_from_1904) + 5) % 7)) ||
               others.contains(static_cast<long long>(day));
    }
};

FreeDays free_days(Call& call, bool has_weekend, std::size_t holidays)
{
    FreeDays days;
    days.of_week = {false, false, false, false, false, true, true};
    if (has_weekend && !call.is_missing(2)) {
        const Value& weekend = call.value(2);
        if (const auto* const text = std::get_if<Text>(&weekend)) {
            require(text->size() == 7 && *text != U"1111111", CellError::Value);
            for (std::size_t i = 0; i < 7; ++i) {
                require((*text)[i] == U'0' || (*text)[i] == U'1', CellError::Value);
                days.of_week.at(i) = (*text)[i] == U'1';
            }
        } else {
            const Value number = to_number(weekend, false);
            const int kind = static_cast<int>(std::get<double>(number));
            require((kind >= 1 && kind <= 7) || (kind >= 11 && kind <= 17));
            days.of_week = {};
            // 1 is Saturday and Sunday, 2 Sunday and Monday; 11 is Sunday alone.
            const int first = kind < 10 ? (kind + 4) % 7 : (kind - 11 + 6) % 7;
            days.of_week.at(static_cast<std::size_t>(first)) = true;
            if (kind < 10) days.of_week.at(static_cast<std::size_t>((first + 1) % 7)) = true;
        }
    }
    if (!call.is_missing(holidays))
        visit_numbers(call, holidays, Counted::Numbers,
                      [&](double day) { days.others.insert(static_cast<long long>(std::floor(day))); });
    return days;
}

template <bool has_weekend>
Operand working_days(Call& call)
{
    double first = day_argument(call, 0), last = day_argument(call, 1);
    const double sign = first > last ? -1 : 1;
    if (first > last) std::swap(first, last);
    const FreeDays free = free_days(call, has_weekend, has_weekend ? 3 : 2);
    call.evaluator().spend(static_cast<std::size_t>(last - first));
    double count = 0;
    for (int day = static_cast<int>(first); day <= static_cast<int>(last); ++day)
        if (!free.has(day, call.counts_from_1904())) ++count;
    return Value(sign * count);
}

template <bool has_weekend>
Operand working_day_later(Call& call)
{
    double day = day_argument(call, 0);
    double left = std::trunc(call.number(1));
    require(std::abs(left) < last_day);
    const FreeDays free = free_days(call, has_weekend, has_weekend ? 3 : 2);
    call.evaluator().spend(static_cast<std::size_t>(std::abs(left)));
    const double step = left < 0 ? -1 : 1;
    while (left != 0) {
        day += step;
        require(is_day_number(day, call.counts_from_1904()));
        if (!free.has(day, call.counts_from_1904())) left -= step;
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
    return Value(static_cast<double>(time_argument(call, 0).*part));
}

constexpr Function table[] = {
    {"DATE", 3, 3, "n", date},
    {"DATEDIF", 3, 3, "nnt", date_difference},
    {"DATEVALUE", 1, 1, "t", from_text<false>},
    {"DAY", 1, 1, "n", of_date<&CalendarTime::day>},
    {"DAYS", 2, 2, "n", days_between},
    {"DAYS360", 2, 3, "nnl", days_360_function},
    {"EDATE", 2, 2, "n", [](Call& call) { return checked_day(months_later(call, false), call); }},
    {"EOMONTH", 2, 2, "n", [](Call& call) { return checked_day(months_later(call, true), call); }},
    {"HOUR", 1, 1, "n", of_time<&CalendarTime::hour>},
    {"ISOWEEKNUM", 1, 1, "n",
     [](Call& call) -> Operand { return Value(iso_week(day_argument(call, 0), call.counts_from_1904())); }},
    {"MINUTE", 1, 1, "n", of_time<&CalendarTime::minute>},
    {"MONTH", 1, 1, "n", of_date<&CalendarTime::month>},
    {"NETWORKDAYS", 2, 3, "nnr", working_days<false>},
    {"NETWORKDAYS.INTL", 2, 4, "nnvr", working_days<true>},
    {"NOW", 0, 0, "n", [](Call& call) -> Operand { return Value(now_number(call, true)); }, true},
    {"SECOND", 1, 1, "n", of_time<&CalendarTime::second>},
    {"TIME", 3, 3, "n", time},
    {"TIMEVALUE", 1, 1, "t", from_text<true>},
    {"TODAY", 0, 0, "n", [](Call& call) -> Operand { return Value(now_number(call, false)); }, true},
    {"WEEKDAY", 1, 2, "n", weekday_number},
    {"WEEKNUM", 1, 2, "n", week_number},
    {"WORKDAY", 2, 3, "nnr", working_day_later<false>},
    {"WORKDAY.INTL", 2, 4, "nnvr", working_day_later<true>},
    {"YEAR", 1, 1, "n", of_date<&CalendarTime::year>},
    {"YEARFRAC", 2, 3, "n", year_fraction},
};

} // namespace

std::span<const Function> date_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
