#include "platform/text/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
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

/// The largest double or 0: a stream knows on which side a number leaves the range.
double value_out_of_range(std::string_view digits)
{
    double value = 0;
    std::istringstream text{std::string(digits)};
    text.imbue(std::locale::classic());
    text >> value;
    return value;
}

double value_of(std::string_view digits)
{
    double value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return read.ec == std::errc::result_out_of_range ? value_out_of_range(digits) : value;
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
