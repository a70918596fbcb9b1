#include "engines/spreadsheets/calculation/subtotals.h"

#include "engines/spreadsheets/calculation/numbers.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

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

double most_frequent(const std::vector<double>& numbers)
{
    std::unordered_map<double, int> counts;
    int most = 1;
    for (const double number : numbers) most = std::max(most, ++counts[number]);
    require(most > 1, CellError::NotAvailable);
    return *std::ranges::find_if(numbers, [&](double number) { return counts[number] == most; });
}

double product_of(const std::vector<double>& numbers)
{
    double product = numbers.empty() ? 0 : 1;
    for (const double number : numbers) product *= number;
    return product;
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

} // namespace

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
    case 4: return numbers.empty() ? 0.0 : *std::ranges::max_element(numbers);
    case 5: return numbers.empty() ? 0.0 : *std::ranges::min_element(numbers);
    case 6: return product_of(numbers);
    case 7: return std::sqrt(variance_of_sums(numbers, true));
    case 8: return std::sqrt(variance_of_sums(numbers, false));
    case 9: return sum_of(numbers);
    case 10: return variance_of_sums(numbers, true);
    case 11: return variance_of_sums(numbers, false);
    case 12: return percentile_of(numbers, 0.5, false);
    default: return most_frequent(numbers);
    }
}

Value ranked_subtotal_of(int kind, const std::vector<Value>& values, double place)
{
    auto numbers = numbers_among(values);
    switch (kind) {
    case 14:
    case 15: {
        const double index = std::floor(place);
        require(index >= 1 && index <= static_cast<double>(numbers.size()));
        std::ranges::sort(numbers);
        const auto i = static_cast<std::size_t>(index);
        return kind == 14 ? numbers[numbers.size() - i] : numbers[i - 1];
    }
    case 16: return percentile_of(numbers, place, false);
    case 17: return percentile_of(numbers, std::trunc(place) / 4, false);
    case 18: return percentile_of(numbers, place, true);
    default: return percentile_of(numbers, std::trunc(place) / 4, true);
    }
}

} // namespace tarvik::calculation
