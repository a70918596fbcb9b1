#pragma once

#include "engines/spreadsheets/calculation/evaluator.h"

#include <cmath>

/// What the families of functions share.
namespace tarvik::calculation {

/// What counts as a number in cells and arrays: numbers alone; or texts too as 0, and truth values as 0 and 1.
enum class Counted { Numbers, Everything };

/// The numbers of the arguments from `begin` to before `end`. A value that is written there itself counts as the number
/// that it is or reads as; ErrorResult for an error.
std::vector<double> numbers_of(Call& call, std::size_t begin, std::size_t end, Counted counted = Counted::Numbers);
inline std::vector<double> numbers_of(Call& call, std::size_t argument)
{
    return numbers_of(call, argument, argument + 1);
}

/// ErrorResult unless it holds.
inline void require(bool holds, CellError error = CellError::Number)
{
    if (!holds) throw ErrorResult{error};
}

/// What a row of numbers comes to. ErrorResult where too few are there.
using Fold = double (*)(const std::vector<double>& numbers);

double sum_of(const std::vector<double>& numbers);
/// 0 of none.
double product_of(const std::vector<double>& numbers);
double largest_of(const std::vector<double>& numbers);
double smallest_of(const std::vector<double>& numbers);
double mean_of(const std::vector<double>& numbers);
double median_of(const std::vector<double>& numbers);
/// The one that comes most often, but twice at least; of several the first.
double most_frequent_of(const std::vector<double>& numbers);
double sum_of_squares(const std::vector<double>& numbers);
/// Of the distances from the mean.
double squared_distances(const std::vector<double>& numbers);
template <bool is_sample>
double variance(const std::vector<double>& numbers)
{
    require(numbers.size() > (is_sample ? 1 : 0), CellError::DivisionByZero);
    return squared_distances(numbers) / (static_cast<double>(numbers.size()) - (is_sample ? 1 : 0));
}
template <Fold variance>
double deviation(const std::vector<double>& numbers)
{
    return std::sqrt(variance(numbers));
}

/// The place counts from 1, from the largest number or from the smallest. ErrorResult for one that is not there.
double ranked_of(std::vector<double> numbers, double place, bool is_from_largest);
/// Between the sorted numbers, `part` from 0 to 1; exclusive: the ends stand for what lies outside of them.
double percentile_of(std::vector<double> numbers, double part, bool is_exclusive);

/// The text, to its end or its beginning alone, against a pattern: "*" is any characters, "?" one; "~" takes their
/// meaning away. Without case.
bool matches_pattern(std::u32string_view pattern, std::u32string_view text, bool to_end = true) noexcept;
/// The first place of the pattern in the text from `from` on, counting from 0, or npos.
std::size_t find_pattern(std::u32string_view pattern, std::u32string_view text, std::size_t from) noexcept;
/// What a pattern without "*" and "?" means, in lower case.
Text unescaped_pattern(std::u32string_view pattern);

/// The comparison that the text begins with, taken off it; nothing when it begins with none.
std::optional<Operator> take_comparison(TextView& text) noexcept;

} // namespace tarvik::calculation
