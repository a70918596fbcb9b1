#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/parse_date.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace tarvik::calculation {

namespace {

constexpr std::size_t longest_number = 100;

bool is_digit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

// In lower case; what is no ASCII becomes '?', but for the Chinese marks of dates and times: y, m, d, h, n, s behind
// '\1'.
std::string plain(TextView text)
{
    constexpr std::u32string_view marks = U"年月日时分秒時";
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t c = lower(text[i]);
        const auto mark = marks.find(c);
        if (mark != std::u32string_view::npos) {
            result += '\1';
            result += "ymdhnsh"[mark];
        } else if (c == U'¥' || c == U'￥' || c == U'€' || c == U'£') {
            result += '$';
        } else {
            result += c < 0x80 ? static_cast<char>(c) : '?';
        }
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
    std::string digits;
    const auto whole = std::min(text.find_first_not_of("0123456789,"), text.size());
    for (std::size_t i = 0; i < whole; ++i) {
        if (is_digit(text[i])) {
            digits += text[i];
            continue;
        }
        if (i == 0 || i + 4 > whole) return std::nullopt;
        if (!std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                         text.begin() + static_cast<std::ptrdiff_t>(i) + 4, is_digit))
            return std::nullopt;
        if (i + 4 < whole && text[i + 4] != ',') return std::nullopt;
    }
    digits += text.substr(whole);
    if (digits.empty() || !(is_digit(digits[0]) || (digits[0] == '.' && digits.size() > 1 && is_digit(digits[1]))))
        return std::nullopt;
    if (const auto plus = digits.find("e+"); plus != std::string::npos) digits.erase(plus + 1, 1);
    double number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return number;
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

// "1 1/2".
std::optional<double> parse_fraction(std::string_view text)
{
    const bool is_negative = text.starts_with('-');
    if (is_negative) text.remove_prefix(1);
    const auto blank = text.find(' '), bar = text.find('/');
    if (blank == std::string_view::npos || bar == std::string_view::npos || bar < blank) return std::nullopt;
    const auto whole = parse_unsigned(text.substr(0, blank));
    const auto above = parse_unsigned(trimmed(text.substr(blank, bar - blank)));
    const auto below = parse_unsigned(trimmed(text.substr(bar + 1)));
    if (!whole || !above || !below || *below == 0 || *whole != std::floor(*whole)) return std::nullopt;
    const double number = *whole + *above / *below;
    return is_negative ? -number : number;
}

} // namespace

std::optional<double> parse_number(TextView text, bool counts_from_1904)
{
    if (text.empty() || text.size() > longest_number) return std::nullopt;
    const std::string characters = plain(text);
    const auto meant = trimmed(characters);
    if (meant.empty()) return std::nullopt;
    if (const auto number = parse_decimal(meant)) return number;
    if (const auto number = parse_fraction(meant)) return number;
    return parse_date(meant, counts_from_1904);
}

} // namespace tarvik::calculation
