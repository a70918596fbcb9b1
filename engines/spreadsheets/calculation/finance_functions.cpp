#include "engines/spreadsheets/calculation/numbers.h"

#include <cmath>

namespace tarvik::calculation {

namespace {

// What one unit a period, and one unit now, are worth after so many periods.
struct Growth {
    double of_payments, of_principal;
};

Growth growth(double rate, double periods, bool pays_first)
{
    if (rate == 0) return {periods, 1};
    const double grown = std::pow(1 + rate, periods);
    return {(grown - 1) / rate * (pays_first ? 1 + rate : 1), grown};
}

double future_value(double rate, double periods, double paid, double present, bool pays_first)
{
    const auto [payments, principal] = growth(rate, periods, pays_first);
    return -(present * principal + paid * payments);
}

Operand pmt(Call& call)
{
    const auto [payments, principal] = growth(call.number(0), call.number(1), call.number(4, 0) != 0);
    require(payments != 0);
    return Value(-(call.number(2) * principal + call.number(3, 0)) / payments);
}

Operand fv(Call& call)
{
    return Value(
        future_value(call.number(0), call.number(1), call.number(2), call.number(3, 0), call.number(4, 0) != 0));
}

Operand pv(Call& call)
{
    const auto [payments, principal] = growth(call.number(0), call.number(1), call.number(4, 0) != 0);
    return Value(-(call.number(3, 0) + call.number(2) * payments) / principal);
}

Operand nper(Call& call)
{
    const double rate = call.number(0), present = call.number(2), future = call.number(3, 0);
    const double paid = call.number(1) * (call.number(4, 0) != 0 ? 1 + rate : 1);
    if (rate == 0) {
        require(paid != 0);
        return Value(-(present + future) / paid);
    }
    return Value(std::log((paid - future * rate) / (paid + present * rate)) / std::log(1 + rate));
}

double present_value(const std::vector<double>& flows, double rate)
{
    double value = 0;
    for (auto flow = flows.rbegin(); flow != flows.rend(); ++flow) value = value / (1 + rate) + *flow;
    return value;
}

Operand npv(Call& call)
{
    require(call.number(0) != -1, CellError::DivisionByZero);
    return Value(present_value(all_numbers(call, 1), call.number(0)) / (1 + call.number(0)));
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
    return Value(root_near(call.number(1, 0.1), [&](double at) { return present_value(flows, at); }));
}

Operand rate(Call& call)
{
    const double periods = call.number(0), paid = call.number(1), present = call.number(2);
    const double future = call.number(3, 0);
    const bool pays_first = call.number(4, 0) != 0;
    require(periods > 0);
    return Value(root_near(call.number(5, 0.1),
                           [&](double at) { return future_value(at, periods, paid, present, pays_first) - future; }));
}

constexpr Function table[] = {
    {"FV", 3, 5, "n", fv},   {"IRR", 1, 2, "rn", irr}, {"NPER", 3, 5, "n", nper}, {"NPV", 2, 255, "nr", npv},
    {"PMT", 3, 5, "n", pmt}, {"PV", 3, 5, "n", pv},    {"RATE", 3, 6, "n", rate},
};

} // namespace

std::span<const Function> finance_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
