#include "platform/text/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <system_error>

namespace tarvik {

namespace {

/// The largest double or 0: a stream knows on which side a number leaves the range.
double value_out_of_range(std::string_view digits)
{
    double value = 0;
    std::istringstream text{std::string(digits)};
    text.imbue(std::locale::classic());
    text >> value;
    return value;
}

struct LeadingNumber {
    double value = 0;
    std::size_t end = 0; ///< behind its last digit; 0 where the text begins with no number
};

/// Blanks, a sign and what the standard library takes for a number, but not the names of what is none.
template <typename Char>
LeadingNumber read_number(std::span<const Char> text)
{
    constexpr std::string_view usable = "0123456789.eE+-";
    std::size_t at = 0;
    while (at < text.size() && text[at] == U' ') ++at;
    const bool negative = at < text.size() && text[at] == U'-';
    if (negative || (at < text.size() && text[at] == U'+')) ++at;
    std::string digits;
    for (std::size_t i = at; i < text.size() && text[i] < 0x80; ++i) {
        const char character = static_cast<char>(text[i]);
        if (usable.find(character) == std::string_view::npos) break;
        digits += character;
    }
    double value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (digits.starts_with('-') || read.ec == std::errc::invalid_argument) return {};
    digits.resize(static_cast<std::size_t>(read.ptr - digits.data()));
    if (read.ec == std::errc::result_out_of_range) value = value_out_of_range(digits);
    return {negative ? -value : value, at + digits.size()};
}

} // namespace

std::optional<double> number(TextView text) noexcept
{
    return rtrim(text).visit([](auto characters) -> std::optional<double> {
        const LeadingNumber found = read_number(characters);
        if (found.end == 0 || found.end != characters.size()) return std::nullopt;
        return found.value;
    });
}

double leading_number(TextView text) noexcept
{
    return text.visit([](auto characters) { return read_number(characters).value; });
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
