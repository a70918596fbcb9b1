#include "engines/spreadsheets/calculation/coercion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <span>

namespace tarvik::calculation {

namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

constexpr double days_to_1904 = 1'462;
constexpr double day_that_never_was = 60;      // 1900-02-29
constexpr sys_days day_zero = 1899y / 12 / 30; // from which the days behind that one count

constexpr std::size_t longest_number = 100;
constexpr std::string_view digits_alone = "0123456789";

// In lower case; what is no ASCII becomes '?', but for signs of currencies and the Chinese marks of dates and times:
// these become Y, M, D, H, N and S.
std::string plain(TextView text)
{
    constexpr std::u32string_view signs = U"年月日时時分秒¥￥€£";
    std::string result;
    for (const char32_t c : lower(text)) {
        const auto sign = signs.find(c);
        result += sign != npos ? "YMDHHNS$$$$"[sign] : c < 0x80 ? static_cast<char>(c) : '?';
    }
    return result;
}

std::string_view trimmed(std::string_view text)
{
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

// Digits with commas only where three digits follow; nothing else.
std::optional<double> parse_unsigned(std::string_view text)
{
    const auto whole = std::min(text.find_first_not_of("0123456789,"), text.size());
    std::string digits(text.substr(0, whole));
    for (auto comma = digits.find(','); comma != std::string::npos; comma = digits.find(',', comma)) {
        const auto next = std::min(digits.find(',', comma + 1), digits.size());
        if (comma == 0 || next - comma != 4) return std::nullopt;
        digits.erase(comma, 1);
    }
    digits += text.substr(whole);
    if (digits.empty() || !(is_digit(digits[0]) || (digits[0] == '.' && digits.size() > 1 && is_digit(digits[1]))))
        return std::nullopt;
    return ooxml::parsed<double>(digits);
}

std::optional<double> parse_decimal(std::string_view text)
{
    bool is_negative = false;
    double divisor = 1;
    bool has_sign = false, has_currency = false;
    const bool has_parentheses = text.starts_with('(') && text.ends_with(')') && text.size() > 2;
    if (has_parentheses) {
        text = trimmed(text.substr(1, text.size() - 2));
        is_negative = true;
    }
    while (!text.empty() && !is_digit(text.front()) && text.front() != '.') {
        if ((text.front() == '+' || text.front() == '-') && !has_sign && !has_parentheses) {
            has_sign = true;
            is_negative = text.front() == '-';
        } else if (text.front() == '$' && !has_currency) {
            has_currency = true;
        } else if (text.front() == '%' && divisor == 1) {
            divisor = 100;
        } else if (text.front() != ' ') {
            return std::nullopt;
        }
        text.remove_prefix(1);
    }
    if (text.ends_with('%') && divisor == 1) {
        divisor = 100;
        text = trimmed(text.substr(0, text.size() - 1));
    }
    const auto number = parse_unsigned(text);
    if (!number) return std::nullopt;
    return (is_negative ? -*number : *number) / divisor;
}

// How a date or time is written: '9' is a number, 'a' and 'p' the halves of the day, and "/" is as good as "-".
struct Writing {
    struct Number {
        int value;
        std::size_t digits;
    };
    std::string signs;
    std::vector<Number> numbers;
};

// Nothing for what holds other words; CannotCalculate for the name of a month, which countries write each in its place.
std::optional<Writing> writing_of(std::string_view text)
{
    constexpr std::string_view months = "jan feb mar apr may jun jul aug sep oct nov dec";
    Writing writing;
    bool has_month = false;
    while (!text.empty()) {
        const auto digits = std::min(text.find_first_not_of(digits_alone), text.size());
        const auto letters = std::min(text.find_first_not_of("abcdefghijklmnopqrstuvwxyz"), text.size());
        const auto piece = text.substr(0, std::max({digits, letters, std::size_t{1}}));
        text.remove_prefix(piece.size());
        has_month = has_month || (letters > 2 && months.find(piece.substr(0, 3)) != npos);
        if (digits > 5 || (letters > 0 && !has_month && piece != "am" && piece != "pm" && piece != "a" && piece != "p"))
            return std::nullopt;
        writing.signs += digits > 0 ? '9' : piece == "/" ? '-' : piece.front();
        if (digits == 0) continue;
        writing.numbers.push_back({0, digits});
        std::from_chars(piece.data(), piece.data() + piece.size(), writing.numbers.back().value);
    }
    if (has_month && !writing.numbers.empty()) throw CannotCalculate("date as a text");
    return writing;
}

// 9:05, 9:05:07.25, 9:05 PM, 9 PM, 9时5分7秒, from the last of the numbers.
std::optional<double> time_of(std::string_view signs, std::span<const Writing::Number> numbers)
{
    constexpr std::array<std::string_view, 6> forms{"9:9", "9:9:9", "9:9:9.9", "9H9", "9H9N", "9H9N9S"};
    const bool has_half = signs.ends_with(" a") || signs.ends_with(" p");
    const bool is_afternoon = signs.ends_with('p');
    if (has_half) signs = trimmed(signs.substr(0, signs.size() - 1));
    if (std::ranges::find(forms, signs) == forms.end() && !(has_half && signs == "9")) return std::nullopt;
    numbers = numbers.last(static_cast<std::size_t>(std::ranges::count(signs, '9')));
    int hour = numbers[0].value;
    if (hour > (has_half ? 12 : 9'999)) return std::nullopt;
    if (has_half) hour = hour % 12 + (is_afternoon ? 12 : 0);
    double seconds = hour * 3600.0;
    for (std::size_t i = 1; i < std::min<std::size_t>(numbers.size(), 3); ++i) {
        if (numbers[i].value > 59) return std::nullopt;
        seconds += numbers[i].value * (i == 1 ? 60 : 1);
    }
    if (numbers.size() > 3) seconds += numbers[3].value / std::pow(10.0, static_cast<double>(numbers[3].digits));
    return seconds / seconds_of_day;
}

std::optional<double> day_of(int year, int month, int day, bool counts_from_1904)
{
    if (year < 30) year += 2000;
    if (year < 100) year += 1900;
    if (year < (counts_from_1904 ? 1904 : 1900) || year > 9999 || month < 1 || month > 12 || day < 1 ||
        day > days_of_month(year, month))
        return std::nullopt;
    return day_number(year, month, day, counts_from_1904);
}

// Of a year, a month and a day, which may be left out. Between hyphens a year is known by its four digits.
constexpr std::array<std::string_view, 4> date_forms{"9Y9M9D", "9Y9M", "9-9-9", "9-9"};

std::optional<double> date_of(std::string_view form, std::span<const Writing::Number> numbers, bool counts_from_1904)
{
    const auto value = [&](std::size_t i) {
        return i == static_cast<std::size_t>(std::ranges::count(form, '9')) ? 1 : numbers[i].value;
    };
    if (form[1] == 'Y' || numbers[0].digits == 4) return day_of(value(0), value(1), value(2), counts_from_1904);
    if (form == "9-9" && std::max(value(0), value(1)) > 31) return std::nullopt;
    if (form == "9-9-9") {
        if (std::min(value(0), value(1)) > 12) return std::nullopt;
        if (value(0) == value(1) && numbers[2].digits == 4)
            return day_of(value(2), value(0), value(1), counts_from_1904);
    }
    throw CannotCalculate("date as a text");
}

// The date, the time or both.
std::optional<double> parse_date(std::string_view text, bool counts_from_1904)
{
    const auto writing = writing_of(text);
    if (!writing) return std::nullopt;
    const std::string_view signs = writing->signs;
    for (const auto form : date_forms) {
        if (!signs.starts_with(form)) continue;
        const auto rest = trimmed(signs.substr(form.size()));
        const auto time = rest.empty() ? std::optional(0.0) : time_of(rest, writing->numbers);
        if (!time) continue;
        const auto date = date_of(form, writing->numbers, counts_from_1904);
        return date ? std::optional(*date + *time) : std::nullopt;
    }
    return time_of(signs, writing->numbers);
}

} // namespace

double day_number(int year, int month, int day, bool counts_from_1904) noexcept
{
    const sys_days first_of_month = std::chrono::year(year) / 1 / 1 + std::chrono::months(month - 1);
    const auto days = static_cast<double>((first_of_month - day_zero).count());
    return (days <= day_that_never_was ? days - 1 : days) + day - 1 - (counts_from_1904 ? days_to_1904 : 0);
}

CalendarTime calendar_time(double number, bool counts_from_1904) noexcept
{
    double day = std::floor(number);
    auto second = static_cast<int>(std::floor((number - day) * seconds_of_day + 0.5));
    if (second == seconds_of_day) {
        day += 1;
        second = 0;
    }
    if (counts_from_1904) day += days_to_1904;
    CalendarTime time{1900, 1, 0, second / 3600, second / 60 % 60, second % 60};
    if (day == day_that_never_was) {
        time.month = 2;
        time.day = 29;
    } else if (day > 0) {
        const int counted = static_cast<int>(day) + (day < day_that_never_was ? 1 : 0);
        const std::chrono::year_month_day date(day_zero + std::chrono::days(counted));
        time.year = static_cast<int>(date.year());
        time.month = static_cast<int>(static_cast<unsigned>(date.month()));
        time.day = static_cast<int>(static_cast<unsigned>(date.day()));
    }
    return time;
}

bool is_day_number(double number, bool counts_from_1904) noexcept
{
    return number >= 0 && number < last_day + 1 - (counts_from_1904 ? days_to_1904 : 0);
}

int weekday(double number, bool counts_from_1904) noexcept
{
    const auto day = static_cast<long long>(std::floor(number) + (counts_from_1904 ? days_to_1904 : 0));
    return static_cast<int>((day + 6) % 7) + 1;
}

int days_of_month(int year, int month) noexcept
{
    if (year == 1900 && month == 2) return 29;
    const auto last = std::chrono::year(year) / month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

std::optional<double> parse_number(TextView text, bool counts_from_1904)
{
    if (text.empty() || text.size() > longest_number) return std::nullopt;
    const std::string characters = plain(text);
    const auto meant = trimmed(characters);
    if (meant.empty()) return std::nullopt;
    if (const auto number = parse_decimal(meant)) return number;
    if (meant.find(' ') < meant.find('/') && meant.find('/') != npos &&
        meant.find_first_not_of("0123456789 /-") == npos)
        throw CannotCalculate("fraction as a text"); // "1 1/2"
    return parse_date(meant, counts_from_1904);
}

} // namespace tarvik::calculation
