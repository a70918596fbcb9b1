#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/numbers.h"

#include <algorithm>
#include <cmath>

namespace tarvik::calculation {

namespace {

std::vector<double> numbers_among(const std::vector<Value>& values)
{
    std::vector<double> numbers;
    for (const auto& value : values) {
        if (const auto* const number = std::get_if<double>(&value)) numbers.push_back(*number);
        if (const auto* const error = std::get_if<CellError>(&value)) throw ErrorResult{*error};
    }
    return numbers;
}

// Subtotals take it from the sum of squares, to whose last digits spreadsheet applications round; where that would lose
// more than digits, from the distances.
double variance_of_sums(const std::vector<double>& numbers, bool is_sample)
{
    double squares = 0;
    for (const double number : numbers) squares += number * number;
    const double sum = sum_of(numbers), distances = squares - sum * sum / static_cast<double>(numbers.size());
    if (numbers.size() < 2 || distances < squares / 1000) return variance_of(numbers, is_sample);
    return distances / (static_cast<double>(numbers.size()) - (is_sample ? 1 : 0));
}

// What is left out of the areas.
struct Skipped {
    bool hidden = false, filtered = false, subtotals = false, errors = false;
};

void append_subtotal_values(Call& call, std::size_t argument, const Skipped& skipped, std::vector<Value>& values)
{
    auto& evaluator = call.evaluator();
    const auto& source = evaluator.source();
    const auto append = [&](const Value& value) {
        if (!(skipped.errors && std::holds_alternative<CellError>(value))) values.push_back(value);
    };
    const auto* const areas = std::get_if<Areas>(&call.operand(argument));
    if (!areas) return evaluator.visit_values(call.operand(argument), append);
    for (const auto& area : *areas) {
        evaluator.visit(area, [&](Place place, const Value& value) {
            if (skipped.hidden && source.is_row_hidden(area.sheet, place.row)) return;
            if (skipped.filtered && source.is_row_filtered(area.sheet, place.row)) return;
            if (skipped.subtotals) {
                const auto formula = source.formula({area.sheet, place});
                if (formula && formula->has_subtotal()) return;
            }
            append(value);
        });
    }
}

// Kinds 1 to 13: the numbers by which the function to take is named.
Value subtotal_of(int kind, const std::vector<Value>& values)
{
    if (kind == 2)
        return static_cast<double>(
            std::ranges::count_if(values, [](const Value& value) { return std::holds_alternative<double>(value); }));
    if (kind == 3)
        return static_cast<double>(std::ranges::count_if(
            values, [](const Value& value) { return !std::holds_alternative<std::monostate>(value); }));
    const auto numbers = numbers_among(values);
    switch (kind) {
    case 1: return mean_of(numbers);
    case 4: return largest_of(numbers);
    case 5: return smallest_of(numbers);
    case 6: return product_of(numbers);
    case 7: return std::sqrt(variance_of_sums(numbers, true));
    case 8: return std::sqrt(variance_of_sums(numbers, false));
    case 9: return sum_of(numbers);
    case 10: return variance_of_sums(numbers, true);
    case 11: return variance_of_sums(numbers, false);
    case 12: return percentile_of(numbers, 0.5, false);
    default: return most_frequent_of(numbers);
    }
}

// Kinds 14 to 19, which ask for a place in the order of the values.
Value ranked_subtotal_of(int kind, const std::vector<Value>& values, double place)
{
    const auto numbers = numbers_among(values);
    switch (kind) {
    case 14:
    case 15: return ranked_of(numbers, std::floor(place), kind == 14);
    case 16: return percentile_of(numbers, place, false);
    case 17: return percentile_of(numbers, std::trunc(place) / 4, false);
    case 18: return percentile_of(numbers, place, true);
    default: return percentile_of(numbers, std::trunc(place) / 4, true);
    }
}

Operand subtotal(Call& call)
{
    const int code = call.whole(0);
    const bool skips_hidden = code > 100;
    std::vector<Value> values;
    for (std::size_t i = 1; i < call.size(); ++i)
        append_subtotal_values(call, i, {.hidden = skips_hidden, .filtered = true, .subtotals = true}, values);
    const int kind = skips_hidden ? code - 100 : code;
    require(kind >= 1 && kind <= 11, CellError::Value);
    return subtotal_of(kind, values);
}

Operand aggregate(Call& call)
{
    const int kind = call.whole(0), option = call.whole(1, 0);
    require(kind >= 1 && kind <= 19 && option >= 0 && option <= 7, CellError::Value);
    const Skipped skipped{.hidden = option % 2 == 1,
                          .filtered = option % 2 == 1,
                          .subtotals = option < 4,
                          .errors = option == 2 || option == 3 || option > 5};
    std::vector<Value> values;
    const std::size_t behind = kind < 14 ? call.size() : 3;
    for (std::size_t i = 2; i < behind; ++i) append_subtotal_values(call, i, skipped, values);
    if (kind < 14) return subtotal_of(kind, values);
    require(call.size() == 4, CellError::Value);
    const Value place = to_number(call.evaluator().single(call.operand(3)), call.counts_from_1904());
    if (std::holds_alternative<CellError>(place)) return place;
    return ranked_subtotal_of(kind, values, std::get<double>(place));
}

constexpr Function table[] = {
    {"AGGREGATE", 3, 255, "nnar", aggregate},
    {"SUBTOTAL", 2, 255, "nr", subtotal},
};

} // namespace

std::span<const Function> subtotal_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
