#include "platform/text/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace tarvik {

namespace {

/// Where a number lies in a text: from its first digit or point, the sign being read apart, to behind its last digit.
struct NumberPlace {
    std::size_t begin = 0, end = 0;
    bool negative = false;

    bool found() const noexcept { return end > begin; }
};

template <typename Characters>
std::size_t behind_digits(Characters text, std::size_t at) noexcept
{
    while (at < text.size() && text[at] >= U'0' && text[at] <= U'9') ++at;
    return at;
}

template <typename Characters>
std::size_t behind_exponent(Characters text, std::size_t at) noexcept
{
    if (at == text.size() || (text[at] != U'e' && text[at] != U'E')) return at;
    std::size_t digits = at + 1;
    if (digits < text.size() && (text[digits] == U'+' || text[digits] == U'-')) ++digits;
    const std::size_t end = behind_digits(text, digits);
    return end > digits ? end : at;
}

template <typename Characters>
NumberPlace place_of_number(Characters text) noexcept
{
    NumberPlace place;
    std::size_t at = 0;
    while (at < text.size() && text[at] == U' ') ++at;
    if (at < text.size() && (text[at] == U'+' || text[at] == U'-')) place.negative = text[at++] == U'-';
    place.begin = place.end = at;
    std::size_t end = behind_digits(text, at);
    std::size_t digits = end - at;
    if (end < text.size() && text[end] == U'.') {
        const std::size_t behind = behind_digits(text, end + 1);
        digits += behind - end - 1;
        end = behind;
    }
    if (digits > 0) place.end = behind_exponent(text, end);
    return place;
}

/// Whether a number that fits into no double is too large, and not too small: by the place of its first digit.
bool too_large(std::string_view digits) noexcept
{
    const std::size_t mark = digits.find_first_of("eE");
    const std::string_view mantissa = digits.substr(0, mark);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_of("123456789"), mantissa.size());
    long long exponent = 0;
    if (mark != std::string_view::npos) {
        std::string_view written = digits.substr(mark + 1);
        const bool below = written.front() == '-';
        if (below || written.front() == '+') written.remove_prefix(1);
        const auto read = std::from_chars(written.data(), written.data() + written.size(), exponent);
        if (read.ec != std::errc()) exponent = std::numeric_limits<long long>::max() / 2;
        if (below) exponent = -exponent;
    }
    return static_cast<long long>(point) - static_cast<long long>(first) + exponent > 0;
}

double value_of(std::string_view digits) noexcept
{
    double value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (read.ec == std::errc::result_out_of_range) return too_large(digits) ? std::numeric_limits<double>::max() : 0;
    return value;
}

template <typename Characters>
double value_at(Characters text, const NumberPlace& place)
{
    const std::size_t size = place.end - place.begin;
    const auto narrow = [&](char* target) {
        for (std::size_t i = 0; i < size; ++i) target[i] = static_cast<char>(text[place.begin + i]);
        const double value = value_of({target, size});
        return place.negative ? -value : value;
    };
    std::array<char, 64> usual{};
    if (size <= usual.size()) return narrow(usual.data());
    std::string long_number(size, '0');
    return narrow(long_number.data());
}

} // namespace

std::optional<double> number(TextView text) noexcept
{
    return rtrim(text).visit([](auto characters) -> std::optional<double> {
        const NumberPlace place = place_of_number(characters);
        if (!place.found() || place.end != characters.size()) return std::nullopt;
        return value_at(characters, place);
    });
}

double leading_number(TextView text) noexcept
{
    return text.visit([](auto characters) {
        const NumberPlace place = place_of_number(characters);
        return place.found() ? value_at(characters, place) : 0.0;
    });
}

Text number_text(double value)
{
    constexpr double plain_below = 1e15, plain_from = 1e-15;
    if (value == 0) return U"0"; // also a negative zero
    const double size = std::abs(value);
    const bool plain = size >= plain_from && size < plain_below;
    std::array<char, 64> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       plain ? std::chars_format::fixed : std::chars_format::scientific);
    std::string_view digits(text.data(), static_cast<std::size_t>(written.ptr - text.data()));
    if (plain || !std::isfinite(value)) return Text(digits.begin(), digits.end());
    const std::size_t mark = digits.find('e');
    Text result(digits.begin(), digits.begin() + static_cast<std::ptrdiff_t>(mark) + 1);
    if (digits[mark + 1] == '-') result += U'-';
    const std::string_view exponent = digits.substr(digits.find_first_not_of('0', mark + 2));
    result.append(exponent.begin(), exponent.end());
    return result;
}

} // namespace tarvik
