#include "engines/spreadsheets/calculation/numbers.h"

#include "engines/spreadsheets/calculation/coercion.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace tarvik::calculation {

void visit_numbers(Call& call, std::size_t argument, Counted counted, const NumberVisitor& visitor)
{
    const bool is_direct = std::holds_alternative<Value>(call.operand(argument));
    call.evaluator().visit_values(call.operand(argument), [&](const Value& value) {
        if (const auto* const number = std::get_if<double>(&value)) return visitor(*number);
        if (const auto* const error = std::get_if<CellError>(&value)) throw ErrorResult{*error};
        if (is_direct) {
            const Value number = to_number(value, call.counts_from_1904());
            if (const auto* const error = std::get_if<CellError>(&number)) throw ErrorResult{*error};
            return visitor(std::get<double>(number));
        }
        if (counted == Counted::Numbers || std::holds_alternative<std::monostate>(value)) return;
        const auto* const truth = std::get_if<bool>(&value);
        visitor(truth && *truth ? 1 : 0);
    });
}

std::vector<double> all_numbers(Call& call, std::size_t from, Counted counted)
{
    std::vector<double> numbers;
    for (std::size_t i = from; i < call.size(); ++i)
        visit_numbers(call, i, counted, [&](double number) { numbers.push_back(number); });
    return numbers;
}

std::vector<double> numbers_of(Call& call, std::size_t argument)
{
    std::vector<double> numbers;
    visit_numbers(call, argument, Counted::Numbers, [&](double number) { numbers.push_back(number); });
    return numbers;
}

double sum_of(const std::vector<double>& numbers) noexcept
{
    double sum = 0;
    for (const double number : numbers) sum += number;
    return sum;
}

double product_of(const std::vector<double>& numbers) noexcept
{
    double product = numbers.empty() ? 0 : 1;
    for (const double number : numbers) product *= number;
    return product;
}

double largest_of(const std::vector<double>& numbers) noexcept
{
    return numbers.empty() ? 0 : *std::ranges::max_element(numbers);
}

double smallest_of(const std::vector<double>& numbers) noexcept
{
    return numbers.empty() ? 0 : *std::ranges::min_element(numbers);
}

double most_frequent_of(const std::vector<double>& numbers)
{
    std::unordered_map<double, int> counts;
    int most = 1;
    for (const double number : numbers) most = std::max(most, ++counts[number]);
    require(most > 1, CellError::NotAvailable);
    return *std::ranges::find_if(numbers, [&](double number) { return counts[number] == most; });
}

double ranked_of(std::vector<double> numbers, double place, bool is_from_largest)
{
    require(place >= 1 && place <= static_cast<double>(numbers.size()));
    const auto index = static_cast<std::size_t>(place);
    const auto wanted =
        numbers.begin() + static_cast<std::ptrdiff_t>(is_from_largest ? numbers.size() - index : index - 1);
    std::ranges::nth_element(numbers, wanted);
    return *wanted;
}

double mean_of(const std::vector<double>& numbers)
{
    require(!numbers.empty(), CellError::DivisionByZero);
    return sum_of(numbers) / static_cast<double>(numbers.size());
}

double squares_of(const std::vector<double>& numbers)
{
    require(!numbers.empty(), CellError::DivisionByZero);
    // Equal numbers have no distance from their mean, however it is rounded.
    if (std::ranges::count(numbers, numbers.front()) == std::ssize(numbers)) return 0;
    const double mean = mean_of(numbers);
    double sum = 0;
    for (const double number : numbers) sum += (number - mean) * (number - mean);
    return sum;
}

double variance_of(const std::vector<double>& numbers, bool is_sample)
{
    require(numbers.size() > (is_sample ? 1U : 0U), CellError::DivisionByZero);
    return squares_of(numbers) / (static_cast<double>(numbers.size()) - (is_sample ? 1 : 0));
}

double percentile_of(std::vector<double> numbers, double part, bool is_exclusive)
{
    require(!numbers.empty() && part >= 0 && part <= 1);
    std::ranges::sort(numbers);
    const auto count = static_cast<double>(numbers.size());
    const double place = is_exclusive ? part * (count + 1) - 1 : part * (count - 1);
    require(place >= 0 && place <= count - 1);
    const auto below = static_cast<std::size_t>(place);
    const double rest = place - static_cast<double>(below);
    if (rest == 0) return numbers[below];
    return numbers[below] + rest * (numbers[below + 1] - numbers[below]);
}

} // namespace tarvik::calculation
