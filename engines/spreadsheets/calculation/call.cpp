#include "engines/spreadsheets/calculation/evaluator.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvik::calculation {

namespace {

char kind_of(std::string_view kinds, std::size_t i) noexcept
{
    const auto bar = kinds.find('|');
    if (bar == std::string_view::npos) return kinds[std::min(i, kinds.size() - 1)];
    if (i < bar) return kinds[i];
    const auto again = kinds.substr(bar + 1);
    return again[(i - bar) % again.size()];
}

} // namespace

const Value& pick(const Array& array, int row, int column) noexcept
{
    static const Value not_available = CellError::NotAvailable;
    if (array.rows() == 1) row = 0;
    if (array.columns() == 1) column = 0;
    return row < array.rows() && column < array.columns() ? array.at(row, column) : not_available;
}

Operand for_each_element(std::span<const ArrayPointer> arrays, const Element& element, Evaluator& evaluator)
{
    int rows = 1, columns = 1, stored_rows = 1, stored_columns = 1;
    for (const auto& array : arrays) {
        rows = std::max(rows, array->rows());
        columns = std::max(columns, array->columns());
        stored_rows = std::max(stored_rows, array->stored_rows());
        stored_columns = std::max(stored_columns, array->stored_columns());
    }
    // What lies behind the stored values is all the same only where each array goes all the way or is one value.
    for (const auto& array : arrays) {
        const bool is_one = array->rows() == 1 && array->columns() == 1;
        if (!is_one && (array->rows() != rows || array->columns() != columns)) {
            stored_rows = rows;
            stored_columns = columns;
        }
    }
    const auto result = evaluator.new_array(rows, columns, stored_rows, stored_columns);
    for (int row = 0; row < stored_rows; ++row)
        for (int column = 0; column < stored_columns; ++column)
            evaluator.store(*result, row, column, element(row, column));
    if (stored_rows < rows || stored_columns < columns) result->set_rest(element(rows - 1, columns - 1));
    return ArrayPointer(result);
}

ArrayPointer Evaluator::array(const Operand& operand)
{
    if (const auto* const array = std::get_if<ArrayPointer>(&operand)) return *array;
    if (const auto* const areas = std::get_if<Areas>(&operand); areas && areas->size() == 1) {
        const Area& area = areas->front();
        const Area stored = used(area);
        const auto array = new_array(area.rows(), area.columns(), stored.rows(), stored.columns());
        source.visit(stored, [&](Place place, const Value& value) {
            store(*array, place.row - area.range.first.row, place.column - area.range.first.column, value);
        });
        return array;
    }
    const auto array = std::make_shared<Array>(1, 1);
    array->stored(0, 0) = std::holds_alternative<Value>(operand) ? std::get<Value>(operand) : Value(CellError::Value);
    return array;
}

int Call::whole(std::size_t i, int otherwise) const
{
    const double number = std::trunc(this->number(i, otherwise));
    if (!(std::abs(number) <= std::numeric_limits<int>::max())) throw ErrorResult{CellError::Number};
    return static_cast<int>(number);
}

const Area& Call::area(std::size_t i) const
{
    if (const auto* const areas = std::get_if<Areas>(&arguments_[i]); areas && areas->size() == 1)
        return areas->front();
    const auto* const value = std::get_if<Value>(&arguments_[i]);
    const auto* const error = value ? std::get_if<CellError>(value) : nullptr;
    throw ErrorResult{error ? *error : CellError::Value};
}

Operand Call::choose(const Choice& choice)
{
    const Operand first = evaluator.valued(evaluate(0), mode);
    const auto taken = [&](std::size_t i) { return i < size() ? evaluate(i) : Operand(Value(false)); };
    if (const auto* const value = std::get_if<Value>(&first)) {
        const auto chosen = choice(*value);
        return chosen == 0 ? first : taken(chosen);
    }
    std::vector<ArrayPointer> arrays{evaluator.array(first)};
    for (std::size_t i = 1; i < std::max<std::size_t>(size(), 3); ++i) arrays.push_back(evaluator.array(taken(i)));
    return for_each_element(
        arrays,
        [&](int row, int column) -> Value {
            try {
                return pick(*arrays[choice(pick(*arrays[0], row, column))], row, column);
            } catch (const ErrorResult& result) {
                return result.error;
            }
        },
        evaluator);
}

void Call::visit_values(std::size_t begin, std::size_t end, const ArgumentVisitor& visitor)
{
    for (std::size_t i = begin; i < end; ++i) {
        const bool is_written = std::holds_alternative<Value>(arguments_[i]);
        evaluator.visit_values(arguments_[i], [&](const Value& value) { visitor(value, is_written); });
    }
}

// False for an error, which is then the argument.
bool Call::take(std::size_t i, char kind, const Value& value)
{
    Value taken = kind == 'n'   ? calculation::to_number(value, counts_from_1904())
                  : kind == 't' ? to_text(value)
                  : kind == 'l' ? calculation::to_truth(value)
                                : value;
    const bool is_error = kind != 'e' && std::holds_alternative<CellError>(taken);
    arguments_[i] = std::move(taken);
    return !is_error;
}

// What is no number is an error, and so is a text too long for a cell; there is one zero.
Operand Call::calculate(const Function& function)
try {
    Operand operand = function.calculate(*this);
    auto* const value = std::get_if<Value>(&operand);
    auto* const number = value ? std::get_if<double>(value) : nullptr;
    const auto* const text = value ? std::get_if<Text>(value) : nullptr;
    if (number && !std::isfinite(*number)) return Value(CellError::Number);
    if (number && *number == 0) *number = 0;
    if (text && text->size() > longest_text) return Value(CellError::Value);
    return operand;
} catch (const ErrorResult& result) {
    return Value(result.error);
}

Operand Call::run(const Function& function)
{
    std::vector<std::size_t> lifted;
    std::vector<ArrayPointer> arrays;
    const Value* error = nullptr;
    for (std::size_t i = 0; i < arguments_.size(); ++i) {
        const char kind = kind_of(function.kinds, i);
        if (kind == 'x') continue;
        arguments_[i] = evaluator.evaluate(node_.children[i], kind == 'a' ? Mode::Array : mode);
        if (kind == 'r' || kind == 'a') continue;
        arguments_[i] = evaluator.valued(std::move(arguments_[i]), mode);
        if (const auto* const array = std::get_if<ArrayPointer>(&arguments_[i])) {
            lifted.push_back(i);
            arrays.push_back(*array);
        } else if (!take(i, kind, Value(value(i))) && !error) {
            error = &value(i);
        }
    }
    if (error) return *error;
    if (lifted.empty()) return calculate(function);
    return for_each_element(
        arrays,
        [&](int row, int column) -> Value {
            for (std::size_t k = 0; k < lifted.size(); ++k) {
                const auto i = lifted[k];
                if (!take(i, kind_of(function.kinds, i), pick(*arrays[k], row, column))) return value(i);
            }
            return evaluator.single(calculate(function));
        },
        evaluator);
}

const Function* find_function(std::string_view name) noexcept
{
    for (const auto table : {logic_functions, mathematics_functions, statistics_functions, conditional_functions,
                             lookup_functions, text_functions, date_functions}) {
        const auto found = std::ranges::lower_bound(table, name, {}, &Function::name);
        if (found != table.end() && found->name == name) return &*found;
    }
    return nullptr;
}

} // namespace tarvik::calculation
