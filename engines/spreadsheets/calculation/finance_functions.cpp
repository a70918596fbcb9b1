#include "engines/spreadsheets/calculation/numbers.h"

#include <cmath>
#include <optional>

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

double payment(double rate, double periods, double present, double future, bool pays_first)
{
    const auto [payments, principal] = growth(rate, periods, pays_first);
    require(payments != 0);
    return -(present * principal + future) / payments;
}

double future_value(double rate, double periods, double paid, double present, bool pays_first)
{
    const auto [payments, principal] = growth(rate, periods, pays_first);
    return -(present * principal + paid * payments);
}

Operand pmt(Call& call)
{
    return Value(payment(call.number(0), call.number(1), call.number(2), call.number(3, 0), call.number(4, 0) != 0));
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

double interest(Call& call)
{
    const double rate = call.number(0), period = call.number(1), periods = call.number(2), present = call.number(3);
    const double future = call.number(4, 0);
    const bool pays_first = call.number(5, 0) != 0;
    require(period >= 1 && period < periods + 1);
    if (pays_first && period == 1) return 0;
    const double paid = payment(rate, periods, present, future, pays_first);
    if (pays_first) return (future_value(rate, period - 2, paid, present, true) - paid) * rate;
    return future_value(rate, period - 1, paid, present, false) * rate;
}

Operand ipmt(Call& call)
{
    return Value(interest(call));
}

Operand ppmt(Call& call)
{
    const double paid =
        payment(call.number(0), call.number(2), call.number(3), call.number(4, 0), call.number(5, 0) != 0);
    return Value(paid - interest(call));
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
std::optional<double> root_near(double guess, Function function)
{
    double at = guess;
    for (int step = 0; step < 100; ++step) {
        const double value = function(at);
        const double width = 1e-6 * std::max(1.0, std::abs(at));
        const double slope = (function(at + width) - function(at - width)) / (2 * width);
        if (slope == 0 || !std::isfinite(slope) || !std::isfinite(value)) return std::nullopt;
        const double next = at - value / slope;
        if (std::abs(next - at) < 1e-13 * std::max(1.0, std::abs(at))) return next;
        at = next;
        if (at <= -1) at = -0.99;
    }
    return std::nullopt;
}

Operand irr(Call& call)
{
    const auto flows = numbers_of(call, 0);
    bool has_income = false, has_cost = false;
    for (const double flow : flows) {
        has_income = has_income || flow > 0;
        has_cost = has_cost || flow < 0;
    }
    require(has_income && has_cost);
    const auto rate = root_near(call.number(1, 0.1), [&](double at) { return present_value(flows, at); });
    require(rate.has_value());
    return Value(*rate);
}

Operand rate(Call& call)
{
    const double periods = call.number(0), paid = call.number(1), present = call.number(2);
    const double future = call.number(3, 0);
    const bool pays_first = call.number(4, 0) != 0;
    require(periods > 0);
    const auto found = root_near(
        call.number(5, 0.1), [&](double at) { return future_value(at, periods, paid, present, pays_first) - future; });
    require(found.has_value());
    return Value(*found);
}

Operand sln(Call& call)
{
    require(call.number(2) != 0, CellError::DivisionByZero);
    return Value((call.number(0) - call.number(1)) / call.number(2));
}

constexpr Function table[] = {
    {"FV", 3, 5, "n", fv},      {"IPMT", 4, 6, "n", ipmt}, {"IRR", 1, 2, "rn", irr},  {"NPER", 3, 5, "n", nper},
    {"NPV", 2, 255, "nr", npv}, {"PMT", 3, 5, "n", pmt},   {"PPMT", 4, 6, "n", ppmt}, {"PV", 3, 5, "n", pv},
    {"RATE", 3, 6, "n", rate},  {"SLN", 3, 3, "n", sln},
};

} // namespace

std::span<const Function> finance_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
