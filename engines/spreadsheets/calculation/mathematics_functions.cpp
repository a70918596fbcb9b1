#include "engines/spreadsheets/calculation/functions.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarvik::calculation {

namespace {

constexpr double largest_whole = 9'007'199'254'740'992; // 2^53

// Functions of numbers, of which those that are left out are 0.
template <double (*function)(double)>
Operand of(Call& call)
{
    return Value(function(call.number(0)));
}

template <double (*function)(double, double)>
Operand of(Call& call)
{
    return Value(function(call.number(0), call.number(1)));
}

template <double (*function)(double, double, double, double, double)>
Operand of(Call& call)
{
    return Value(function(call.number(0), call.number(1), call.number(2), call.number(3), call.number(4)));
}

Operand logarithm(Call& call)
{
    const double number = call.number(0), base = call.number(1, 10);
    require(number > 0 && base > 0);
    require(base != 1, CellError::DivisionByZero);
    if (base == 10) return Value(std::log10(number));
    return Value(std::log(number) / std::log(base));
}

double sign(double number)
{
    return number == 0 ? 0 : std::copysign(1, number);
}

// The sine so many quarter turns ahead. Spreadsheet applications know pi to 66 bits, which shows beside its multiples.
double sine(double angle, double ahead)
{
    constexpr double quarter = std::numbers::pi / 2, rest_of_quarter = 6.1257422745431e-17, largest = 1e6;
    if (std::abs(angle) > largest) return ahead == 0 ? std::sin(angle) : std::cos(angle);
    const double turns = std::nearbyint(angle / quarter);
    const double rest = std::fma(-turns, quarter, angle) - turns * rest_of_quarter;
    const double at = turns + ahead - 4 * std::floor((turns + ahead) / 4);
    const double result = at == 0 || at == 2 ? std::sin(rest) : std::cos(rest);
    return at < 2 ? result : -result;
}

double floor_15(double number)
{
    return std::floor(to_15_digits(number));
}

double modulo(double number, double divisor)
{
    require(divisor != 0, CellError::DivisionByZero);
    require(std::abs(number / divisor) < 1.1259e12 * 1e3);
    return without_rest(number - divisor * floor_15(number / divisor), number);
}

// At a whole multiple of `step`; up or down, for negative numbers too when `mirrored` is false.
double stepped(double number, double step, bool up)
{
    if (step == 0 || number == 0) return 0;
    const double times = to_15_digits(number / step);
    return (up ? std::ceil(times) : std::floor(times)) * step;
}

template <bool up>
double step_to(double number, double step)
{
    require(!(number > 0 && step < 0));
    require(up || step != 0 || number == 0, CellError::DivisionByZero);
    return stepped(number, step, up);
}

template <bool up>
Operand step_math(Call& call)
{
    const double number = call.number(0), step = std::abs(call.number(1, 1));
    const bool away = call.number(2) != 0 && number < 0;
    return Value(stepped(number, step, away ? !up : up));
}

double nearest_step(double number, double step)
{
    if (number == 0 || step == 0) return 0;
    require((number < 0) == (step < 0));
    return std::floor(to_15_digits(number / step) + 0.5) * step;
}

double even(double number)
{
    return std::copysign(std::ceil(std::abs(number) / 2) * 2, number);
}

double odd(double number)
{
    const double size = std::abs(number) <= 1 ? 1 : std::ceil((std::abs(number) - 1) / 2) * 2 + 1;
    return number < 0 ? -size : size;
}

Operand round_up(Call& call)
{
    const double number = call.number(0);
    const int decimals = call.whole(1);
    const double cut = rounded(number, decimals, 0);
    const double power = std::pow(10.0, decimals);
    if (to_15_digits(cut) == to_15_digits(number) || !std::isfinite(power)) return Value(cut);
    return Value(rounded(cut + std::copysign(1 / power, number), decimals));
}

double factorial(double number)
{
    require(number > -1 && number < 171);
    double product = 1;
    for (int factor = 2; factor <= static_cast<int>(number); ++factor) product *= factor;
    return product;
}

double combinations(double number, double chosen)
{
    number = std::trunc(number);
    chosen = std::trunc(chosen);
    require(number >= 0 && chosen >= 0 && chosen <= number && number < 1e6);
    chosen = std::min(chosen, number - chosen);
    double result = 1;
    for (int i = 1; i <= static_cast<int>(chosen) && std::isfinite(result); ++i)
        result = result * (number - chosen + i) / i;
    return result < largest_whole ? std::round(result) : result;
}

double arc_tangent_2(double x, double y)
{
    require(x != 0 || y != 0, CellError::DivisionByZero);
    return std::atan2(y, x);
}

// What one unit a period, and one unit now, are worth after so many periods. Payments fall due at their ends, or at
// their beginnings where `due` is not 0.
struct Growth {
    double of_payments, of_principal;
};

Growth growth(double rate, double periods, double due)
{
    if (rate == 0) return {periods, 1};
    const double grown = std::pow(1 + rate, periods);
    return {(grown - 1) / rate * (due != 0 ? 1 + rate : 1), grown};
}

double payment(double rate, double periods, double present, double future, double due)
{
    const auto [payments, principal] = growth(rate, periods, due);
    require(payments != 0);
    return -(present * principal + future) / payments;
}

double future_value(double rate, double periods, double paid, double present, double due)
{
    const auto [payments, principal] = growth(rate, periods, due);
    return -(present * principal + paid * payments);
}

double present_value(double rate, double periods, double paid, double future, double due)
{
    const auto [payments, principal] = growth(rate, periods, due);
    return -(future + paid * payments) / principal;
}

double periods_of(double rate, double paid, double present, double future, double due)
{
    paid *= due != 0 ? 1 + rate : 1;
    if (rate == 0) {
        require(paid != 0);
        return -(present + future) / paid;
    }
    return std::log((paid - future * rate) / (paid + present * rate)) / std::log(1 + rate);
}

double value_of_flows(const std::vector<double>& flows, double rate)
{
    double value = 0;
    for (auto flow = flows.rbegin(); flow != flows.rend(); ++flow) value = value / (1 + rate) + *flow;
    return value;
}

Operand npv(Call& call)
{
    require(call.number(0) != -1, CellError::DivisionByZero);
    return Value(value_of_flows(numbers_of(call, 1, call.size()), call.number(0)) / (1 + call.number(0)));
}

// Newton's way to where the function is 0.
template <typename Function>
double root_near(double guess, Function function)
{
    double at = guess;
    for (int step = 0; step < 100; ++step) {
        const double value = function(at);
        const double width = 1e-6 * std::max(1.0, std::abs(at));
        const double slope = (function(at + width) - function(at - width)) / (2 * width);
        require(slope != 0 && std::isfinite(slope) && std::isfinite(value));
        const double next = at - value / slope;
        if (std::abs(next - at) < 1e-13 * std::max(1.0, std::abs(at))) return next;
        at = next > -1 ? next : -0.99;
    }
    throw ErrorResult{CellError::Number};
}

Operand irr(Call& call)
{
    const auto flows = numbers_of(call, 0);
    require(largest_of(flows) > 0 && smallest_of(flows) < 0);
    return Value(root_near(call.number(1, 0.1), [&](double at) { return value_of_flows(flows, at); }));
}

Operand rate(Call& call)
{
    const double periods = call.number(0), paid = call.number(1), present = call.number(2), future = call.number(3);
    require(periods > 0);
    return Value(root_near(call.number(5, 0.1), [&](double at) {
        return future_value(at, periods, paid, present, call.number(4)) - future;
    }));
}

constexpr Function table[] = {
    {"ABS", 1, 1, "n", of<std::abs>},
    {"ACOS", 1, 1, "n", of<std::acos>},
    {"ACOSH", 1, 1, "n", of<std::acosh>},
    {"ASIN", 1, 1, "n", of<std::asin>},
    {"ASINH", 1, 1, "n", of<std::asinh>},
    {"ATAN", 1, 1, "n", of<std::atan>},
    {"ATAN2", 2, 2, "n", of<arc_tangent_2>},
    {"ATANH", 1, 1, "n", of<std::atanh>},
    {"CEILING", 2, 2, "n", of<step_to<true>>},
    {"CEILING.MATH", 1, 3, "n", step_math<true>},
    {"COMBIN", 2, 2, "n", of<combinations>},
    {"COS", 1, 1, "n", of<[](double angle) { return sine(angle, 1); }>},
    {"COSH", 1, 1, "n", of<std::cosh>},
    {"DEGREES", 1, 1, "n", of<[](double angle) { return angle * 180 / std::numbers::pi; }>},
    {"EVEN", 1, 1, "n", of<even>},
    {"EXP", 1, 1, "n", of<std::exp>},
    {"FACT", 1, 1, "n", of<factorial>},
    {"FLOOR", 2, 2, "n", of<step_to<false>>},
    {"FLOOR.MATH", 1, 3, "n", step_math<false>},
    {"FV", 3, 5, "n", of<future_value>},
    {"INT", 1, 1, "n", of<floor_15>},
    {"IRR", 1, 2, "rn", irr},
    {"LN", 1, 1, "n", of<std::log>},
    {"LOG", 1, 2, "n", logarithm},
    {"LOG10", 1, 1, "n", of<std::log10>},
    {"MOD", 2, 2, "n", of<modulo>},
    {"MROUND", 2, 2, "n", of<nearest_step>},
    {"NPER", 3, 5, "n", of<periods_of>},
    {"NPV", 2, 255, "nr", npv},
    {"ODD", 1, 1, "n", of<odd>},
    {"PI", 0, 0, "n", [](Call&) -> Operand { return Value(std::numbers::pi); }},
    {"PMT", 3, 5, "n", of<payment>},
    {"POWER", 2, 2, "n",
     [](Call& call) -> Operand { return operate(Operator::Power, call.value(0), call.value(1), false); }},
    {"PV", 3, 5, "n", of<present_value>},
    {"RADIANS", 1, 1, "n", of<[](double angle) { return angle / 180 * std::numbers::pi; }>},
    {"RATE", 3, 6, "n", rate},
    {"ROUND", 2, 2, "n", [](Call& call) -> Operand { return Value(rounded(call.number(0), call.whole(1))); }},
    {"ROUNDDOWN", 2, 2, "n", [](Call& call) -> Operand { return Value(rounded(call.number(0), call.whole(1), 0)); }},
    {"ROUNDUP", 2, 2, "n", round_up},
    {"SIGN", 1, 1, "n", of<sign>},
    {"SIN", 1, 1, "n", of<[](double angle) { return sine(angle, 0); }>},
    {"SINH", 1, 1, "n", of<std::sinh>},
    {"SQRT", 1, 1, "n", of<std::sqrt>},
    {"TAN", 1, 1, "n", of<[](double angle) { return sine(angle, 0) / sine(angle, 1); }>},
    {"TANH", 1, 1, "n", of<std::tanh>},
    {"TRUNC", 1, 2, "n", [](Call& call) -> Operand { return Value(rounded(call.number(0), call.whole(1), 0)); }},
};
static_assert(std::ranges::is_sorted(table, {}, &Function::name));

} // namespace

constinit const std::span<const Function> mathematics_functions = table;

} // namespace tarvik::calculation
