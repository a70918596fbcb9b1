#include "engines/spreadsheets/calculation/evaluator.h"

#include <cmath>
#include <functional>

namespace tarvik::calculation {

namespace {

bool is_error(const Value& value) noexcept
{
    return std::holds_alternative<CellError>(value);
}

bool is_not_available(const Value& value) noexcept
{
    return value == Value(CellError::NotAvailable);
}

Operand if_function(Call& call)
{
    return call.choose([&](const Value& value) -> std::size_t { return required<bool>(to_truth(value)) ? 1 : 2; });
}

// The first value, or the second where the first is of that kind.
template <bool (*is_replaced)(const Value&) noexcept>
Operand replaced(Call& call)
{
    const Operand result = call.choose([](const Value& value) -> std::size_t { return is_replaced(value) ? 1 : 0; });
    return result == Operand(Value()) ? Value(0.0) : result;
}

Value one_value(Call& call, std::size_t i)
{
    return call.evaluator.single(call.evaluator.valued(call.evaluate(i), call.mode));
}

Operand ifs(Call& call)
{
    for (std::size_t i = 0; i + 1 < call.size(); i += 2)
        if (required<bool>(to_truth(one_value(call, i)))) return call.evaluate(i + 1);
    return Value(CellError::NotAvailable);
}

Operand switch_function(Call& call)
{
    const Value value = one_value(call, 0);
    if (is_error(value)) return value;
    std::size_t i = 1;
    for (; i + 1 < call.size(); i += 2) {
        const Value candidate = one_value(call, i);
        if (is_error(candidate)) return candidate;
        const Value equal = operate(Operator::Equal, value, candidate, call.counts_from_1904());
        if (equal == Value(true)) return call.evaluate(i + 1);
    }
    return i < call.size() ? call.evaluate(i) : Operand(Value(CellError::NotAvailable));
}

// Of the truth values among the arguments; texts in cells are none.
template <typename Combination>
Operand combined(Call& call)
{
    std::optional<bool> result;
    call.visit_values(0, call.size(), [&](const Value& value, bool is_written) {
        if (!is_written && (std::holds_alternative<Text>(value) || std::holds_alternative<std::monostate>(value)))
            return;
        const bool truth = required<bool>(to_truth(value));
        result = result ? Combination()(*result, truth) : truth;
    });
    return result ? Value(*result) : Value(CellError::Value);
}

Value number_of(const Value& value)
{
    if (const auto* const truth = std::get_if<bool>(&value)) return *truth ? 1.0 : 0.0;
    return std::holds_alternative<double>(value) || is_error(value) ? value : Value(0.0);
}

Value text_of(const Value& value)
{
    return std::holds_alternative<Text>(value) || is_error(value) ? value : Value(Text());
}

// Of an area the first cell counts.
template <Value (*function)(const Value&)>
Operand of_first(Call& call)
{
    const auto* const areas = std::get_if<Areas>(&call.operand(0));
    if (areas) return function(call.evaluator.source.value({areas->front().sheet, areas->front().range.first}));
    const ArrayPointer array = call.evaluator.array(call.operand(0));
    return for_each_element(
        std::span(&array, 1), [&](int row, int column) { return function(array->at(row, column)); }, call.evaluator);
}

Operand type_of(Call& call)
{
    if (std::holds_alternative<ArrayPointer>(call.operand(0))) return Value(64.0);
    const Value value = call.evaluator.single(call.operand(0));
    if (std::holds_alternative<Text>(value)) return Value(2.0);
    if (std::holds_alternative<bool>(value)) return Value(4.0);
    return Value(is_error(value) ? 16.0 : 1.0);
}

template <typename Kind>
Operand is_kind(Call& call)
{
    return Value(std::holds_alternative<Kind>(call.value(0)));
}

template <bool is_odd>
Operand parity(Call& call)
{
    if (std::holds_alternative<bool>(call.value(0))) return CellError::Value;
    return (std::fmod(std::trunc(call.to_number(call.value(0))), 2) != 0) == is_odd;
}

constexpr Function table[] = {
    {"AND", 1, 255, "r", combined<std::logical_and<>>},
    {"ERROR.TYPE", 1, 1, "e",
     [](Call& call) -> Operand {
         const auto* const error = std::get_if<CellError>(&call.value(0));
         return error ? Value(static_cast<double>(*error) + 1) : CellError::NotAvailable;
     }},
    {"FALSE", 0, 0, "v", [](Call&) -> Operand { return Value(false); }},
    {"IF", 2, 3, "x", if_function},
    {"IFERROR", 2, 2, "x", replaced<is_error>},
    {"IFNA", 2, 2, "x", replaced<is_not_available>},
    {"IFS", 2, 254, "x", ifs},
    {"ISBLANK", 1, 1, "e", is_kind<std::monostate>},
    {"ISERR", 1, 1, "e",
     [](Call& call) -> Operand { return Value(is_error(call.value(0)) && !is_not_available(call.value(0))); }},
    {"ISERROR", 1, 1, "e", is_kind<CellError>},
    {"ISEVEN", 1, 1, "v", parity<false>},
    {"ISLOGICAL", 1, 1, "e", is_kind<bool>},
    {"ISNA", 1, 1, "e", [](Call& call) -> Operand { return Value(is_not_available(call.value(0))); }},
    {"ISNONTEXT", 1, 1, "e", [](Call& call) -> Operand { return Value(!std::holds_alternative<Text>(call.value(0))); }},
    {"ISNUMBER", 1, 1, "e", is_kind<double>},
    {"ISODD", 1, 1, "v", parity<true>},
    {"ISREF", 1, 1, "r", [](Call& call) -> Operand { return Value(std::holds_alternative<Areas>(call.operand(0))); }},
    {"ISTEXT", 1, 1, "e", is_kind<Text>},
    {"N", 1, 1, "r", of_first<number_of>},
    {"NA", 0, 0, "v", [](Call&) -> Operand { return Value(CellError::NotAvailable); }},
    {"NOT", 1, 1, "l", [](Call& call) -> Operand { return Value(!call.truth(0)); }},
    {"OR", 1, 255, "r", combined<std::logical_or<>>},
    {"SINGLE", 1, 1, "v", [](Call& call) -> Operand { return call.value(0); }},
    {"SWITCH", 3, 254, "x", switch_function},
    {"T", 1, 1, "r", of_first<text_of>},
    {"TRUE", 0, 0, "v", [](Call&) -> Operand { return Value(true); }},
    {"TYPE", 1, 1, "r", type_of},
    {"XOR", 1, 255, "r", combined<std::not_equal_to<>>},
};
static_assert(std::ranges::is_sorted(table, {}, &Function::name));

} // namespace

constinit const std::span<const Function> logic_functions = table;

} // namespace tarvik::calculation
