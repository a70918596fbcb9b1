#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace tarvik::calculation {

namespace {

constexpr double largest_whole = 9'007'199'254'740'992; // 2^53
constexpr double largest_bits = 281'474'976'710'655;    // 2^48 - 1

using Plain = double (*)(double);

template <Plain function>
Operand plain(Call& call)
{
    return Value(function(call.number(0)));
}

Operand log_function(Call& call)
{
    const double number = call.number(0), base = call.number(1, 10);
    require(number > 0 && base > 0);
    require(base != 1, CellError::DivisionByZero);
    if (base == 10) return Value(std::log10(number));
    return Value(std::log(number) / std::log(base));
}

double floor_15(double number)
{
    return std::floor(to_15_digits(number));
}

Operand modulo(Call& call)
{
    const double number = call.number(0), divisor = call.number(1);
    require(divisor != 0, CellError::DivisionByZero);
    require(std::abs(number / divisor) < 1.1259e12 * 1e3);
    const double rest = number - divisor * floor_15(number / divisor);
    return Value(without_rest(rest, number));
}

// At a whole multiple of `step`; up or down, for negative numbers too when `mirrored` is false.
double stepped(double number, double step, bool up)
{
    if (step == 0 || number == 0) return 0;
    const double times = to_15_digits(number / step);
    return (up ? std::ceil(times) : std::floor(times)) * step;
}

Operand ceiling(Call& call)
{
    const double number = call.number(0), step = call.number(1);
    require(!(number > 0 && step < 0));
    return Value(stepped(number, step, true));
}

Operand floor_function(Call& call)
{
    const double number = call.number(0), step = call.number(1);
    require(!(number > 0 && step < 0));
    require(step != 0 || number == 0, CellError::DivisionByZero);
    return Value(stepped(number, step, false));
}

template <bool up>
Operand step_math(Call& call)
{
    const double number = call.number(0), step = std::abs(call.number(1, 1));
    const bool away = call.number(2, 0) != 0 && number < 0;
    return Value(stepped(number, step, away ? !up : up));
}

Operand mround(Call& call)
{
    const double number = call.number(0), step = call.number(1);
    if (number == 0 || step == 0) return Value(0.0);
    require((number < 0) == (step < 0));
    return Value(std::floor(to_15_digits(number / step) + 0.5) * step);
}

Operand even(Call& call)
{
    const double number = call.number(0);
    return Value(std::copysign(std::ceil(std::abs(number) / 2) * 2, number));
}

Operand odd(Call& call)
{
    const double number = call.number(0);
    const double size = std::abs(number) <= 1 ? 1 : std::ceil((std::abs(number) - 1) / 2) * 2 + 1;
    return Value(number < 0 ? -size : size);
}

Operand round_up(Call& call)
{
    const double number = call.number(0);
    const int decimals = call.whole(1, 0);
    const double cut = truncated(number, decimals);
    const double power = std::pow(10.0, decimals);
    if (to_15_digits(cut) == to_15_digits(number) || !std::isfinite(power)) return Value(cut);
    return Value(rounded(cut + std::copysign(1 / power, number), decimals));
}

double factorial(double number)
{
    double product = 1;
    for (double factor = 2; factor <= number; ++factor) product *= factor;
    return product;
}

Operand fact(Call& call)
{
    const double number = std::trunc(call.number(0));
    require(number >= 0 && number <= 170);
    return Value(factorial(number));
}

Operand fact_double(Call& call)
{
    double product = 1;
    const double number = std::trunc(call.number(0));
    require(number >= -1 && number <= 300);
    for (double factor = number; factor > 1; factor -= 2) product *= factor;
    return Value(product);
}

double combinations(double number, double chosen)
{
    require(number >= 0 && chosen >= 0 && chosen <= number && number < 1e6);
    chosen = std::min(chosen, number - chosen);
    double result = 1;
    for (double i = 1; i <= chosen; ++i) result = result * (number - chosen + i) / i;
    return result < largest_whole ? std::round(result) : result;
}

Operand combin(Call& call)
{
    return Value(combinations(std::trunc(call.number(0)), std::trunc(call.number(1))));
}

Operand combina(Call& call)
{
    const double number = std::trunc(call.number(0)), chosen = std::trunc(call.number(1));
    require(number >= 0 && chosen >= 0 && (number > 0 || chosen == 0));
    return Value(chosen == 0 ? 1.0 : combinations(number + chosen - 1, chosen));
}

Operand permut(Call& call)
{
    const double number = std::trunc(call.number(0)), chosen = std::trunc(call.number(1));
    require(number >= 0 && chosen >= 0 && chosen <= number && chosen < 1e4);
    double product = 1;
    for (double i = 0; i < chosen; ++i) product *= number - i;
    return Value(product);
}

double whole_number(const Value& value, Call& call)
{
    require(!std::holds_alternative<bool>(value), CellError::Value);
    const Value number = to_number(value, call.counts_from_1904());
    if (const auto* const error = std::get_if<CellError>(&number)) throw ErrorResult{*error};
    const double whole = std::trunc(std::get<double>(number));
    require(whole >= 0 && whole < largest_whole);
    return whole;
}

template <bool is_least_multiple>
Operand common(Call& call)
{
    double result = is_least_multiple ? 1 : 0;
    for (std::size_t i = 0; i < call.size(); ++i) {
        call.evaluator().visit_values(call.operand(i), [&](const Value& value) {
            const auto number = static_cast<std::int64_t>(whole_number(value, call));
            const auto so_far = static_cast<std::int64_t>(result);
            const auto divisor = std::gcd(so_far, number);
            if (!is_least_multiple) {
                result = static_cast<double>(divisor);
            } else {
                result = divisor == 0 ? 0 : result / static_cast<double>(divisor) * static_cast<double>(number);
            }
            require(result < largest_whole);
        });
    }
    return Value(result);
}

Operand quotient(Call& call)
{
    require(call.number(1) != 0, CellError::DivisionByZero);
    return Value(std::trunc(call.number(0) / call.number(1)));
}

Operand arc_tangent_2(Call& call)
{
    require(call.number(0) != 0 || call.number(1) != 0, CellError::DivisionByZero);
    return Value(std::atan2(call.number(1), call.number(0)));
}

// Digits up to "Z".
Text in_base(double number, int base, std::size_t length)
{
    Text digits;
    do {
        const auto digit = static_cast<char32_t>(std::fmod(number, base));
        digits.insert(digits.begin(), digit < 10 ? U'0' + digit : U'A' + digit - 10);
        number = std::floor(number / base);
    } while (number > 0);
    if (digits.size() < length) digits.insert(0, length - digits.size(), U'0');
    return digits;
}

double from_base(const Text& text, int base)
{
    double number = 0;
    for (const char32_t c : text) {
        const char32_t digit = c >= U'0' && c <= U'9'   ? c - U'0'
                               : c >= U'a' && c <= U'z' ? c - U'a' + 10
                                                        : upper(c) - U'A' + 10;
        require(digit < static_cast<char32_t>(base) && text.size() <= 255);
        number = number * base + digit;
    }
    return number;
}

Operand base_function(Call& call)
{
    const double number = std::trunc(call.number(0));
    const int base = call.whole(1), length = call.whole(2, 0);
    require(number >= 0 && number < largest_whole && base >= 2 && base <= 36 && length >= 0 && length <= 255);
    return Value(in_base(number, base, static_cast<std::size_t>(length)));
}

Operand decimal(Call& call)
{
    require(call.whole(1) >= 2 && call.whole(1) <= 36);
    return Value(from_base(call.text(0), call.whole(1)));
}

// Ten digits, of which the first half is negative: the range of a base.
double half_range(int base)
{
    return base == 2 ? 512 : std::pow(base, 10) / 2;
}

template <int from, int to>
Operand convert(Call& call)
{
    double number = 0;
    if constexpr (from == 10) {
        const Value taken = to_number(call.value(0), call.counts_from_1904());
        if (const auto* const error = std::get_if<CellError>(&taken)) throw ErrorResult{*error};
        number = std::trunc(std::get<double>(taken));
    } else {
        const Value text = to_text(call.value(0));
        require(std::get<Text>(text).size() <= 10);
        number = from_base(std::get<Text>(text), from);
        if (number >= half_range(from)) number -= 2 * half_range(from);
    }
    if constexpr (to == 10) return Value(number);
    require(number >= -half_range(to) && number < half_range(to));
    const int length = call.whole(1, 0);
    require(length >= 0 && length <= 10);
    if (number < 0) return Value(in_base(number + 2 * half_range(to), to, 10));
    const Text digits = in_base(number, to, static_cast<std::size_t>(length));
    require(call.size() < 2 || digits.size() == static_cast<std::size_t>(length));
    return Value(digits);
}

template <typename Work>
Operand on_bits(Call& call, Work work)
{
    const double a = call.number(0), b = call.number(1);
    require(a >= 0 && b >= 0 && a <= largest_bits && b <= largest_bits && a == std::floor(a) && b == std::floor(b));
    return Value(static_cast<double>(work(static_cast<std::uint64_t>(a), static_cast<std::uint64_t>(b))));
}

template <int direction>
Operand shift(Call& call)
{
    const double number = call.number(0), by = std::trunc(call.number(1)) * direction;
    require(number >= 0 && number <= largest_bits && number == std::floor(number) && std::abs(by) <= 53);
    const double result = std::floor(std::ldexp(number, static_cast<int>(by)));
    require(result <= largest_bits);
    return Value(result);
}

Operand roman(Call& call)
{
    constexpr std::array<std::pair<int, std::u32string_view>, 13> signs{{{1000, U"M"},
                                                                         {900, U"CM"},
                                                                         {500, U"D"},
                                                                         {400, U"CD"},
                                                                         {100, U"C"},
                                                                         {90, U"XC"},
                                                                         {50, U"L"},
                                                                         {40, U"XL"},
                                                                         {10, U"X"},
                                                                         {9, U"IX"},
                                                                         {5, U"V"},
                                                                         {4, U"IV"},
                                                                         {1, U"I"}}};
    if (call.size() > 1) throw CannotCalculate("ROMAN with a form");
    int number = call.whole(0);
    require(number >= 0 && number <= 3999, CellError::Value);
    Text text;
    for (const auto& [value, sign] : signs)
        for (; number >= value; number -= value) text += sign;
    return Value(text);
}

constexpr double degrees_of_circle = 180;

constexpr Function table[] = {
    {"ABS", 1, 1, "n", plain<std::abs>},
    {"ACOS", 1, 1, "n", plain<std::acos>},
    {"ACOSH", 1, 1, "n", plain<std::acosh>},
    {"ASIN", 1, 1, "n", plain<std::asin>},
    {"ASINH", 1, 1, "n", plain<std::asinh>},
    {"ATAN", 1, 1, "n", plain<std::atan>},
    {"ATAN2", 2, 2, "n", arc_tangent_2},
    {"ATANH", 1, 1, "n", plain<std::atanh>},
    {"BASE", 2, 3, "n", base_function},
    {"BIN2DEC", 1, 1, "v", convert<2, 10>},
    {"BIN2HEX", 1, 2, "vn", convert<2, 16>},
    {"BIN2OCT", 1, 2, "vn", convert<2, 8>},
    {"BITAND", 2, 2, "n", [](Call& call) { return on_bits(call, [](auto a, auto b) { return a & b; }); }},
    {"BITLSHIFT", 2, 2, "n", shift<1>},
    {"BITOR", 2, 2, "n", [](Call& call) { return on_bits(call, [](auto a, auto b) { return a | b; }); }},
    {"BITRSHIFT", 2, 2, "n", shift<-1>},
    {"BITXOR", 2, 2, "n", [](Call& call) { return on_bits(call, [](auto a, auto b) { return a ^ b; }); }},
    {"CEILING", 2, 2, "n", ceiling},
    {"CEILING.MATH", 1, 3, "n", step_math<true>},
    {"CEILING.PRECISE", 1, 2, "n", step_math<true>},
    {"COMBIN", 2, 2, "n", combin},
    {"COMBINA", 2, 2, "n", combina},
    {"COS", 1, 1, "n", plain<std::cos>},
    {"COSH", 1, 1, "n", plain<std::cosh>},
    {"DEC2BIN", 1, 2, "vn", convert<10, 2>},
    {"DEC2HEX", 1, 2, "vn", convert<10, 16>},
    {"DEC2OCT", 1, 2, "vn", convert<10, 8>},
    {"DECIMAL", 2, 2, "tn", decimal},
    {"DEGREES", 1, 1, "n",
     [](Call& call) -> Operand { return Value(call.number(0) * degrees_of_circle / std::numbers::pi); }},
    {"EVEN", 1, 1, "n", even},
    {"EXP", 1, 1, "n", plain<std::exp>},
    {"FACT", 1, 1, "n", fact},
    {"FACTDOUBLE", 1, 1, "n", fact_double},
    {"FLOOR", 2, 2, "n", floor_function},
    {"FLOOR.MATH", 1, 3, "n", step_math<false>},
    {"FLOOR.PRECISE", 1, 2, "n", step_math<false>},
    {"GCD", 1, 255, "r", common<false>},
    {"HEX2BIN", 1, 2, "vn", convert<16, 2>},
    {"HEX2DEC", 1, 1, "v", convert<16, 10>},
    {"HEX2OCT", 1, 2, "vn", convert<16, 8>},
    {"INT", 1, 1, "n", plain<floor_15>},
    {"ISO.CEILING", 1, 2, "n", step_math<true>},
    {"LCM", 1, 255, "r", common<true>},
    {"LN", 1, 1, "n",
     [](Call& call) -> Operand { return call.number(0) > 0 ? Value(std::log(call.number(0))) : CellError::Number; }},
    {"LOG", 1, 2, "n", log_function},
    {"LOG10", 1, 1, "n",
     [](Call& call) -> Operand { return call.number(0) > 0 ? Value(std::log10(call.number(0))) : CellError::Number; }},
    {"MOD", 2, 2, "n", modulo},
    {"MROUND", 2, 2, "n", mround},
    {"OCT2BIN", 1, 2, "vn", convert<8, 2>},
    {"OCT2DEC", 1, 1, "v", convert<8, 10>},
    {"OCT2HEX", 1, 2, "vn", convert<8, 16>},
    {"ODD", 1, 1, "n", odd},
    {"PERMUT", 2, 2, "n", permut},
    {"PI", 0, 0, "n", [](Call&) -> Operand { return Value(std::numbers::pi); }},
    {"POWER", 2, 2, "n",
     [](Call& call) -> Operand { return operate(Operator::Power, call.value(0), call.value(1), false); }},
    {"QUOTIENT", 2, 2, "n", quotient},
    {"RADIANS", 1, 1, "n",
     [](Call& call) -> Operand { return Value(call.number(0) / degrees_of_circle * std::numbers::pi); }},
    {"ROMAN", 1, 2, "n", roman},
    {"ROUND", 2, 2, "n", [](Call& call) -> Operand { return Value(rounded(call.number(0), call.whole(1))); }},
    {"ROUNDDOWN", 2, 2, "n", [](Call& call) -> Operand { return Value(truncated(call.number(0), call.whole(1))); }},
    {"ROUNDUP", 2, 2, "n", round_up},
    {"SIGN", 1, 1, "n",
     [](Call& call) -> Operand {
         return Value(call.number(0) > 0 ? 1.0 : call.number(0) < 0 ? -1.0 : 0.0);
     }},
    {"SIN", 1, 1, "n", plain<std::sin>},
    {"SINH", 1, 1, "n", plain<std::sinh>},
    {"SQRT", 1, 1, "n", plain<std::sqrt>},
    {"SQRTPI", 1, 1, "n", [](Call& call) -> Operand { return Value(std::sqrt(call.number(0) * std::numbers::pi)); }},
    {"TAN", 1, 1, "n", plain<std::tan>},
    {"TANH", 1, 1, "n", plain<std::tanh>},
    {"TRUNC", 1, 2, "n", [](Call& call) -> Operand { return Value(truncated(call.number(0), call.whole(1, 0))); }},
};

} // namespace

std::span<const Function> mathematics_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
