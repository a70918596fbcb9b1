#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/evaluator.h"

#include <array>
#include <cmath>

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

Operand branch(Call& call, std::size_t i)
{
    return i < call.size() ? call.evaluate(i) : Operand(Value(false));
}

Operand if_function(Call& call)
{
    const Operand condition = call.evaluate_valued(0);
    if (const auto* const value = std::get_if<Value>(&condition)) {
        const Value truth = to_truth(*value);
        if (is_error(truth)) return truth;
        return branch(call, std::get<bool>(truth) ? 1 : 2);
    }
    auto& evaluator = call.evaluator();
    const std::array<ArrayPointer, 3> arrays{evaluator.array(condition), evaluator.array(branch(call, 1)),
                                             evaluator.array(branch(call, 2))};
    return for_each_element(
        arrays,
        [&](int row, int column) -> Value {
            Value truth = to_truth(pick(*arrays[0], row, column));
            if (is_error(truth)) return truth;
            return pick(*arrays[std::get<bool>(truth) ? 1 : 2], row, column);
        },
        evaluator);
}

// The first value, or the second where the first is of that kind.
Operand replaced(Call& call, bool (*is_replaced)(const Value&) noexcept)
{
    Operand first = call.evaluate_valued(0);
    if (const auto* const value = std::get_if<Value>(&first)) {
        if (!is_replaced(*value)) return std::holds_alternative<std::monostate>(*value) ? Value(0.0) : *value;
        return call.evaluate(1);
    }
    auto& evaluator = call.evaluator();
    const std::array<ArrayPointer, 2> arrays{evaluator.array(first), evaluator.array(call.evaluate(1))};
    return for_each_element(
        arrays,
        [&](int row, int column) {
            const Value& value = pick(*arrays[0], row, column);
            return is_replaced(value) ? pick(*arrays[1], row, column) : value;
        },
        evaluator);
}

Value one_value(Call& call, std::size_t i)
{
    return call.evaluator().single(call.evaluate_valued(i));
}

Operand ifs(Call& call)
{
    for (std::size_t i = 0; i + 1 < call.size(); i += 2) {
        const Value truth = to_truth(one_value(call, i));
        if (is_error(truth)) return truth;
        if (std::get<bool>(truth)) return call.evaluate(i + 1);
    }
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

// Calls the visitor for each truth value among the arguments; texts in cells are none.
void visit_truths(Call& call, const std::function<void(bool)>& visitor)
{
    bool has_any = false;
    for (std::size_t i = 0; i < call.size(); ++i) {
        const bool is_direct = std::holds_alternative<Value>(call.operand(i));
        call.evaluator().visit_values(call.operand(i), [&](const Value& value) {
            if (!is_direct && (std::holds_alternative<Text>(value) || std::holds_alternative<std::monostate>(value)))
                return;
            const Value truth = to_truth(value);
            if (const auto* const error = std::get_if<CellError>(&truth)) throw ErrorResult{*error};
            visitor(std::get<bool>(truth));
            has_any = true;
        });
    }
    if (!has_any) throw ErrorResult{CellError::Value};
}

Operand and_function(Call& call)
{
    bool result = true;
    visit_truths(call, [&](bool truth) { result = result && truth; });
    return Value(result);
}

Operand or_function(Call& call)
{
    bool result = false;
    visit_truths(call, [&](bool truth) { result = result || truth; });
    return Value(result);
}

Operand xor_function(Call& call)
{
    bool result = false;
    visit_truths(call, [&](bool truth) { result = result != truth; });
    return Value(result);
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
    if (areas) return function(call.evaluator().cell(areas->front().sheet, areas->front().range.first));
    const ArrayPointer array = call.evaluator().array(call.operand(0));
    return for_each_element(
        std::span(&array, 1), [&](int row, int column) { return function(array->at(row, column)); }, call.evaluator());
}

Operand type_of(Call& call)
{
    if (std::holds_alternative<ArrayPointer>(call.operand(0))) return Value(64.0);
    const Value value = call.evaluator().single(call.operand(0));
    if (std::holds_alternative<Text>(value)) return Value(2.0);
    if (std::holds_alternative<bool>(value)) return Value(4.0);
    return Value(is_error(value) ? 16.0 : 1.0);
}

Operand error_type(Call& call)
{
    const auto* const error = std::get_if<CellError>(&call.value(0));
    return error ? Value(static_cast<double>(*error) + 1) : Value(CellError::NotAvailable);
}

template <typename Kind>
Operand is_kind(Call& call)
{
    return Value(std::holds_alternative<Kind>(call.value(0)));
}

Operand is_odd(Call& call)
{
    if (std::holds_alternative<bool>(call.value(0))) return Value(CellError::Value);
    return Value(std::fmod(std::trunc(call.to_number(call.value(0))), 2) != 0);
}

Operand is_even(Call& call)
{
    const Operand odd = is_odd(call);
    const auto* const truth = std::get_if<bool>(&std::get<Value>(odd));
    return truth ? Operand(Value(!*truth)) : odd;
}

constexpr Function table[] = {
    {"AND", 1, 255, "r", and_function},
    {"ERROR.TYPE", 1, 1, "e", error_type},
    {"FALSE", 0, 0, "v", [](Call&) -> Operand { return Value(false); }},
    {"IF", 2, 3, "x", if_function},
    {"IFERROR", 2, 2, "x", [](Call& call) { return replaced(call, is_error); }},
    {"IFNA", 2, 2, "x", [](Call& call) { return replaced(call, is_not_available); }},
    {"IFS", 2, 254, "x", ifs},
    {"ISBLANK", 1, 1, "e", is_kind<std::monostate>},
    {"ISERR", 1, 1, "e",
     [](Call& call) -> Operand { return Value(is_error(call.value(0)) && !is_not_available(call.value(0))); }},
    {"ISERROR", 1, 1, "e", is_kind<CellError>},
    {"ISEVEN", 1, 1, "v", is_even},
    {"ISLOGICAL", 1, 1, "e", is_kind<bool>},
    {"ISNA", 1, 1, "e", [](Call& call) -> Operand { return Value(is_not_available(call.value(0))); }},
    {"ISNONTEXT", 1, 1, "e", [](Call& call) -> Operand { return Value(!std::holds_alternative<Text>(call.value(0))); }},
    {"ISNUMBER", 1, 1, "e", is_kind<double>},
    {"ISODD", 1, 1, "v", is_odd},
    {"ISREF", 1, 1, "r", [](Call& call) -> Operand { return Value(std::holds_alternative<Areas>(call.operand(0))); }},
    {"ISTEXT", 1, 1, "e", is_kind<Text>},
    {"N", 1, 1, "r", of_first<number_of>},
    {"NA", 0, 0, "v", [](Call&) -> Operand { return Value(CellError::NotAvailable); }},
    {"NOT", 1, 1, "l", [](Call& call) -> Operand { return Value(!call.truth(0)); }},
    {"OR", 1, 255, "r", or_function},
    {"SINGLE", 1, 1, "v", [](Call& call) -> Operand { return call.value(0); }},
    {"SWITCH", 3, 254, "x", switch_function},
    {"T", 1, 1, "r", of_first<text_of>},
    {"TRUE", 0, 0, "v", [](Call&) -> Operand { return Value(true); }},
    {"TYPE", 1, 1, "r", type_of},
    {"XOR", 1, 255, "r", xor_function},
};

} // namespace

std::span<const Function> logic_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
