#include "columns/sort.h"

#include "platform/text/code_page.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvik {

namespace {

/// Which positions of a text make its key, counted from 1, and the base of their weights. A last position of 0 means
/// that none do.
struct KeyRule {
    std::size_t first = 1, last = 0;
    double base = 2;
};

bool is_single_byte(char32_t character)
{
    const int code = char_code(character);
    return code >= 1 && code <= 127;
}

std::size_t positions_of_wide_text(std::size_t length)
{
    if (length < 4) return 2;
    if (length <= 6) return 4;
    return length <= 12 ? 6 : 8;
}

KeyRule rule_of(TextView text)
{
    constexpr std::size_t last_position_with_letters = 18;
    const std::size_t length = text.size();
    if (is_number(text) || is_number(mid(text, 1, 3))) return {1, length, 10};
    KeyRule rule;
    for (std::size_t i = 1; i <= length; ++i) {
        if (!is_single_byte(text[i - 1])) rule.last = positions_of_wide_text(length);
        else if (i != length) return {i, std::min(length, last_position_with_letters), 2};
    }
    return rule;
}

// Powers of ten are exact up to this one.
constexpr std::array powers_of_ten{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double power(double base, std::size_t exponent)
{
    if (base == 2) return std::ldexp(1, static_cast<int>(exponent));
    return exponent < powers_of_ten.size() ? powers_of_ten[exponent] : std::pow(base, static_cast<double>(exponent));
}

double code_at(TextView text, std::size_t position)
{
    return position <= text.size() ? char_code(text[position - 1]) : 0;
}

} // namespace

double sunnum(TextView text)
{
    const KeyRule rule = rule_of(text);
    double sum = 0;
    for (std::size_t k = rule.first; k <= rule.last; ++k) sum += power(rule.base, rule.last - k) * code_at(text, k);
    if (std::isfinite(sum)) return sum;
    // Hundreds of digits pass what a number can hold: the first of them alone then decide.
    double key = 0;
    for (std::size_t k = rule.first; k <= rule.last && std::isfinite(key); ++k)
        key = key * rule.base + code_at(text, k);
    return key;
}

} // namespace tarvik
