#include "engines/spreadsheets/calculation/functions.h"

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <unordered_map>

namespace tarvik::calculation {

namespace {

constexpr std::array<std::pair<std::u32string_view, Operator>, 6> prefixes{{{U"<>", Operator::NotEqual},
                                                                            {U"<=", Operator::LessOrEqual},
                                                                            {U">=", Operator::GreaterOrEqual},
                                                                            {U"<", Operator::Less},
                                                                            {U">", Operator::Greater},
                                                                            {U"=", Operator::Equal}}};

// The pattern's character at `at` and what it means; moves `at` behind it.
struct PatternCharacter {
    char32_t character;
    bool is_any, is_rest;
};

PatternCharacter take(std::u32string_view pattern, std::size_t& at) noexcept
{
    const char32_t c = pattern[at++];
    if (c == U'~' && at < pattern.size() && (pattern[at] == U'*' || pattern[at] == U'?' || pattern[at] == U'~'))
        return {pattern[at++], false, false};
    return {lower(c), c == U'?', c == U'*'};
}

} // namespace

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

bool matches_pattern(std::u32string_view pattern, std::u32string_view text, bool to_end) noexcept
{
    std::size_t at = 0, place = 0;
    std::size_t star = npos, star_place = 0;
    while (true) {
        if (at == pattern.size() && (!to_end || place == text.size())) return true;
        if (at < pattern.size()) {
            std::size_t behind = at;
            const auto [character, is_any, is_rest] = take(pattern, behind);
            if (is_rest) {
                star = at = behind;
                star_place = place;
                continue;
            }
            if (place < text.size() && (is_any || character == lower(text[place]))) {
                at = behind;
                ++place;
                continue;
            }
        }
        if (star == npos || star_place >= text.size()) return false;
        at = star;
        place = ++star_place;
    }
}

std::size_t find_pattern(std::u32string_view pattern, std::u32string_view text, std::size_t from) noexcept
{
    std::size_t star = 0;
    for (std::size_t behind = 0; star < pattern.size() && !take(pattern, behind).is_rest;) star = behind;
    const auto beginning = pattern.substr(0, star);
    // What does not follow the first place of the beginning does not follow a later one.
    for (std::size_t i = from; i <= text.size(); ++i)
        if (matches_pattern(beginning, text.substr(i), false))
            return matches_pattern(pattern, text.substr(i), false) ? i : npos;
    return npos;
}

std::optional<Operator> take_comparison(TextView& text) noexcept
{
    for (const auto& [prefix, how] : prefixes) {
        if (!text.starts_with(prefix)) continue;
        text = text.substr(prefix.size());
        return how;
    }
    return std::nullopt;
}

Text unescaped_pattern(std::u32string_view pattern)
{
    Text meant;
    for (std::size_t at = 0; at < pattern.size();) meant += take(pattern, at).character;
    return meant;
}

} // namespace tarvik::calculation
