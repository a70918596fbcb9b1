#include "engines/spreadsheets/calculation/numbers.h"

#include "engines/spreadsheets/calculation/coercion.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <unordered_map>

namespace tarvik::calculation {

std::vector<double> numbers_of(Call& call, std::size_t begin, std::size_t end, Counted counted)
{
    std::vector<double> numbers;
    call.visit_values(begin, end, [&](const Value& value, bool is_written) {
        if (const auto* const number = std::get_if<double>(&value)) return numbers.push_back(*number);
        if (is_written || std::holds_alternative<CellError>(value)) return numbers.push_back(call.to_number(value));
        if (counted == Counted::Numbers || std::holds_alternative<std::monostate>(value)) return;
        const auto* const truth = std::get_if<bool>(&value);
        numbers.push_back(truth && *truth ? 1 : 0);
    });
    return numbers;
}

double sum_of(const std::vector<double>& numbers)
{
    return std::accumulate(numbers.begin(), numbers.end(), 0.0);
}

double product_of(const std::vector<double>& numbers)
{
    return std::accumulate(numbers.begin(), numbers.end(), numbers.empty() ? 0.0 : 1.0, std::multiplies<>());
}

double largest_of(const std::vector<double>& numbers)
{
    return numbers.empty() ? 0 : std::ranges::max(numbers);
}

double smallest_of(const std::vector<double>& numbers)
{
    return numbers.empty() ? 0 : std::ranges::min(numbers);
}

double mean_of(const std::vector<double>& numbers)
{
    require(!numbers.empty(), CellError::DivisionByZero);
    return sum_of(numbers) / static_cast<double>(numbers.size());
}

double median_of(const std::vector<double>& numbers)
{
    return percentile_of(numbers, 0.5, false);
}

double most_frequent_of(const std::vector<double>& numbers)
{
    std::unordered_map<double, int> counts;
    int most = 1;
    for (const double number : numbers) most = std::max(most, ++counts[number]);
    require(most > 1, CellError::NotAvailable);
    return *std::ranges::find_if(numbers, [&](double number) { return counts[number] == most; });
}

double sum_of_squares(const std::vector<double>& numbers)
{
    return std::inner_product(numbers.begin(), numbers.end(), numbers.begin(), 0.0);
}

double squared_distances(const std::vector<double>& numbers)
{
    require(!numbers.empty());
    // Equal numbers have no distance from their mean, however it is rounded.
    if (std::ranges::count(numbers, numbers.front()) == std::ssize(numbers)) return 0;
    const double mean = mean_of(numbers);
    double sum = 0;
    for (const double number : numbers) sum += (number - mean) * (number - mean);
    return sum;
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
