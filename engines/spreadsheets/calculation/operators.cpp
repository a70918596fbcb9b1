#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/evaluator.h"

#include <cmath>

namespace tarvik::calculation {

namespace {

Value power(double base, double exponent)
{
    if (base == 0 && exponent == 0) return CellError::Number;
    if (base == 0 && exponent < 0) return CellError::DivisionByZero;
    return std::pow(base, exponent);
}

Value arithmetic(Operator how, double a, double b)
{
    switch (how) {
    case Operator::Add: return a + b;
    case Operator::Subtract: return a - b;
    case Operator::Multiply: return a * b;
    case Operator::Divide: return b == 0 ? Value(CellError::DivisionByZero) : Value(a / b);
    default: return power(a, b);
    }
}

bool holds(Operator how, int order)
{
    switch (how) {
    case Operator::Equal: return order == 0;
    case Operator::NotEqual: return order != 0;
    case Operator::Less: return order < 0;
    case Operator::LessOrEqual: return order <= 0;
    case Operator::Greater: return order > 0;
    default: return order >= 0;
    }
}

bool are_equal(const Value& a, const Value& b)
{
    // Whether two texts are equal does not depend on the order of their characters.
    if (std::holds_alternative<Text>(a) && std::holds_alternative<Text>(b)) return is_equal(a, b);
    return compare(a, b) == 0;
}

} // namespace

double without_rest(double result, double operand) noexcept
{
    return std::abs(result) < std::abs(operand) * 0x1p-49 ? 0.0 : result;
}

Value operate(Operator how, const Value& a, const Value& b, bool counts_from_1904)
{
    if (std::holds_alternative<CellError>(a)) return a;
    if (std::holds_alternative<CellError>(b)) return b;
    if (how == Operator::Equal || how == Operator::NotEqual) return are_equal(a, b) == (how == Operator::Equal);
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
