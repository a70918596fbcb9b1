#include "engines/spreadsheets/calculation/coercion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarvik::calculation {

namespace {

// Where digits and punctuation stand among each other in sorted columns; letters come behind them. Hyphen and
// apostrophe are passed over by some languages only.
constexpr std::u32string_view order_of_signs = U" _,;:!?.\"()[]{}@*/\\&#%`^+<=>|~$0123456789";

int rank_of(char32_t character)
{
    const auto place = order_of_signs.find(character);
    if (place != std::u32string_view::npos) return static_cast<int>(place);
    if (character >= U'a' && character <= U'z') return static_cast<int>(order_of_signs.size() + character);
    if (character > 0x7f) return 1'000;
    throw CannotCalculate("order of texts");
}

int compare_texts(const Text& a, const Text& b)
{
    const auto size = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < size; ++i) {
        const char32_t one = lower(a[i]), other = lower(b[i]);
        if (one == other) continue;
        const int order = rank_of(one) - rank_of(other);
        if (order == 0) throw CannotCalculate("order of texts");
        return order < 0 ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

int compare_numbers(double a, double b) noexcept
{
    if (a == b) return 0;
    if (std::abs(a - b) < 1e-13 * std::max(std::abs(a), std::abs(b)) && to_15_digits(a) == to_15_digits(b)) return 0;
    return a < b ? -1 : 1;
}

constexpr std::size_t longest_decimals = 18; // 20 characters with the point
constexpr std::size_t sure_zeros = 8;

Text with_digits(double number, int digits)
{
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::general, digits).ptr;
    return upper(TextView(Text(buffer.begin(), end)));
}

// The value of the same kind that nothing stands for beside the other.
Value filled(const Value& value, const Value& beside)
{
    if (!std::holds_alternative<std::monostate>(value)) return value;
    if (std::holds_alternative<Text>(beside)) return Text();
    if (std::holds_alternative<bool>(beside)) return false;
    return 0.0;
}

Value arithmetic(Operator how, double a, double b)
{
    switch (how) {
    case Operator::Add: return a + b;
    case Operator::Subtract: return a - b;
    case Operator::Multiply: return a * b + 0.0; // there is one zero
    case Operator::Divide: return b == 0 ? Value(CellError::DivisionByZero) : Value(a / b);
    default: break;
    }
    if (a == 0 && b <= 0) return b == 0 ? CellError::Number : CellError::DivisionByZero;
    return std::pow(a, b);
}

} // namespace

Value to_number(const Value& value, bool counts_from_1904)
{
    if (std::holds_alternative<double>(value) || std::holds_alternative<CellError>(value)) return value;
    if (const auto* const truth = std::get_if<bool>(&value)) return *truth ? 1.0 : 0.0;
    if (const auto* const text = std::get_if<Text>(&value)) {
        const auto number = parse_number(*text, counts_from_1904);
        return number ? Value(*number) : Value(CellError::Value);
    }
    return 0.0;
}

Value to_text(const Value& value)
{
    if (std::holds_alternative<Text>(value) || std::holds_alternative<CellError>(value)) return value;
    if (const auto* const truth = std::get_if<bool>(&value)) return Text(*truth ? U"TRUE" : U"FALSE");
    if (const auto* const number = std::get_if<double>(&value)) return plain_text(*number);
    return Text();
}

Value to_truth(const Value& value)
{
    if (std::holds_alternative<bool>(value) || std::holds_alternative<CellError>(value)) return value;
    if (const auto* const number = std::get_if<double>(&value)) return *number != 0;
    if (const auto* const text = std::get_if<Text>(&value)) {
        const Text word = lower(TextView(*text));
        if (word == U"true") return true;
        return word == U"false" ? Value(false) : Value(CellError::Value);
    }
    return false;
}

Text plain_text(double number)
{
    if (number == 0) return U"0";
    Text text = with_digits(number, 15);
    const auto mark = text.find(U"E-");
    if (mark == Text::npos) return text;
    // A few digits far behind the point are written out.
    const auto digits = std::min(text.find(U'.'), mark) == mark ? 1 : mark - 1 - (number < 0 ? 1 : 0);
    const auto zeros = static_cast<std::size_t>(-std::floor(std::log10(std::abs(number)))) - 1;
    if (zeros + digits > longest_decimals) return text;
    if (zeros > sure_zeros) throw CannotCalculate("a small number as a text");
    return decimal_text(number, static_cast<int>(zeros + digits));
}

Text general_text(double number)
{
    const double size = std::abs(number);
    if (size == 0) return U"0";
    if (size >= 1e11 || size < 1e-9) return with_digits(number, 6);
    const int exponent = static_cast<int>(std::floor(std::log10(size)));
    // Eleven characters hold the point too, and a 0 before it.
    const int decimals = exponent >= 10 ? 0 : exponent >= 0 ? 9 - exponent : 9;
    if (exponent < -4 && rounded(size, decimals) != to_15_digits(size)) return with_digits(number, 6);
    Text text = decimal_text(number, decimals);
    if (decimals > 0) text.erase(text.find_last_not_of(U'0') + 1);
    if (text.ends_with(U'.')) text.pop_back();
    return text;
}

Text decimal_text(double number, int decimals)
{
    std::array<char, 512> buffer{};
    const auto end = std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::fixed, decimals).ptr;
    return {buffer.begin(), end};
}

double to_15_digits(double number) noexcept
{
    if (!std::isfinite(number) || number == 0) return number;
    if (number == std::floor(number) && std::abs(number) < 1e15) return number;
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.begin(), buffer.end(), number, std::chars_format::scientific, 14).ptr;
    double result = number;
    std::from_chars(buffer.begin(), end, result); // leaves the number where the digits are too large a one
    return result;
}

double rounded(double number, int decimals, double half) noexcept
{
    if (decimals > 300 || !std::isfinite(number)) return number;
    if (decimals < -300) return 0;
    const double power = std::pow(10.0, std::abs(decimals));
    const double scaled = to_15_digits(decimals >= 0 ? std::abs(number) * power : std::abs(number) / power);
    if (!std::isfinite(scaled) || (decimals >= 0 && scaled >= 1e15)) return number;
    const double whole = std::floor(scaled + half);
    return std::copysign(decimals >= 0 ? whole / power : whole * power, number);
}

int compare(const Value& a, const Value& b)
{
    const Value one = filled(a, b), other = filled(b, a);
    if (one.index() != other.index()) {
        const auto rank = [](const Value& value) {
            return std::holds_alternative<double>(value) ? 0 : std::holds_alternative<Text>(value) ? 1 : 2;
        };
        return rank(one) < rank(other) ? -1 : 1;
    }
    if (const auto* const number = std::get_if<double>(&one)) return compare_numbers(*number, std::get<double>(other));
    if (const auto* const text = std::get_if<Text>(&one)) return compare_texts(*text, std::get<Text>(other));
    const auto* const truth = std::get_if<bool>(&one);
    return truth ? static_cast<int>(*truth) - static_cast<int>(std::get<bool>(other)) : 0;
}

bool is_equal(const Value& a, const Value& b)
{
    if (a.index() != b.index()) return false;
    const auto* const text = std::get_if<Text>(&a);
    if (!text) return a == b;
    const auto& other = std::get<Text>(b);
    return std::ranges::equal(*text, other, [](char32_t one, char32_t two) { return lower(one) == lower(two); });
}

bool holds(Operator comparison, int order) noexcept
{
    switch (comparison) {
    case Operator::Equal: return order == 0;
    case Operator::NotEqual: return order != 0;
    case Operator::Less: return order < 0;
    case Operator::LessOrEqual: return order <= 0;
    case Operator::Greater: return order > 0;
    default: return order >= 0;
    }
}

double without_rest(double result, double operand) noexcept
{
    return std::abs(result) < std::abs(operand) * 0x1p-49 ? 0.0 : result;
}

Value operate(Operator how, const Value& a, const Value& b, bool counts_from_1904)
{
    if (std::holds_alternative<CellError>(a)) return a;
    if (std::holds_alternative<CellError>(b)) return b;
    if (how == Operator::Equal || how == Operator::NotEqual) {
        // Whether two texts are equal does not depend on the order of their characters.
        const bool are_texts = std::holds_alternative<Text>(a) && std::holds_alternative<Text>(b);
        return (are_texts ? is_equal(a, b) : compare(a, b) == 0) == (how == Operator::Equal);
    }
    if (how < Operator::Join) return holds(how, compare(a, b));
    if (how == Operator::Join) {
        Text joined = std::get<Text>(to_text(a));
        joined += std::get<Text>(to_text(b));
        if (joined.size() > longest_text) return CellError::Value;
        return joined;
    }
    Value one = to_number(a, counts_from_1904);
    if (std::holds_alternative<CellError>(one)) return one;
    Value other = to_number(b, counts_from_1904);
    if (std::holds_alternative<CellError>(other)) return other;
    const Value result = arithmetic(how, std::get<double>(one), std::get<double>(other));
    const auto* const number = std::get_if<double>(&result);
    return number && !std::isfinite(*number) ? Value(CellError::Number) : result;
}

} // namespace tarvik::calculation
