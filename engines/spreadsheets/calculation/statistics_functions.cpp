#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/numbers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarvik::calculation {

namespace {

Operand sum(Call& call)
{
    double result = 0;
    for (std::size_t i = 0; i < call.size(); ++i)
        visit_numbers(call, i, Counted::Numbers, [&](double number) { result += number; });
    return Value(result);
}

Operand count(Call& call)
{
    double result = 0;
    for (std::size_t i = 0; i < call.size(); ++i) {
        const bool is_direct = std::holds_alternative<Value>(call.operand(i));
        call.evaluator().visit_values(call.operand(i), [&](const Value& value) {
            if (std::holds_alternative<double>(value) ||
                (is_direct && std::holds_alternative<double>(to_number(value, call.counts_from_1904()))))
                ++result;
        });
    }
    return Value(result);
}

Operand count_all(Call& call)
{
    double result = 0;
    for (std::size_t i = 0; i < call.size(); ++i) {
        const bool is_direct = std::holds_alternative<Value>(call.operand(i));
        call.evaluator().visit_values(call.operand(i), [&](const Value& value) {
            if (is_direct || !std::holds_alternative<std::monostate>(value)) ++result;
        });
    }
    return Value(result);
}

Operand count_blank(Call& call)
{
    const Area& area = call.area(0);
    double result = static_cast<double>(area.rows()) * area.columns();
    call.evaluator().visit(area, [&](Place, const Value& value) {
        const auto* const text = std::get_if<Text>(&value);
        if (!std::holds_alternative<std::monostate>(value) && !(text && text->empty())) --result;
    });
    return Value(result);
}

template <Counted counted>
Operand average(Call& call)
{
    return Value(mean_of(all_numbers(call, 0, counted)));
}

template <Counted counted, bool is_largest>
Operand extreme(Call& call)
{
    const auto numbers = all_numbers(call, 0, counted);
    return Value(is_largest ? largest_of(numbers) : smallest_of(numbers));
}

template <Counted counted, bool is_sample, bool is_deviation>
Operand variance(Call& call)
{
    const double result = variance_of(all_numbers(call, 0, counted), is_sample);
    return Value(is_deviation ? std::sqrt(result) : result);
}

template <bool is_largest>
Operand ranked(Call& call)
{
    const double place = is_largest ? std::ceil(call.number(1)) : std::floor(call.number(1));
    return Value(ranked_of(numbers_of(call, 0), place, is_largest));
}

template <bool is_average>
Operand rank(Call& call)
{
    const double number = call.number(0);
    const bool is_rising = call.number(2, 0) != 0;
    double before = 0, equal = 0;
    for (const double other : numbers_of(call, 1)) {
        if (other == number) ++equal;
        if (is_rising ? other < number : other > number) ++before;
    }
    require(equal > 0, CellError::NotAvailable);
    return Value(before + (is_average ? (equal + 1) / 2 : 1));
}

Operand median(Call& call)
{
    return Value(percentile_of(all_numbers(call), 0.5, false));
}

// A text, and one cell without a number, are no arguments.
Operand mode(Call& call)
{
    for (std::size_t i = 0; i < call.size(); ++i) {
        const auto* const value = std::get_if<Value>(&call.operand(i));
        require(!value || !std::holds_alternative<Text>(*value), CellError::Value);
        const auto* const areas = std::get_if<Areas>(&call.operand(i));
        const bool is_cell = areas && areas->size() == 1 && areas->front().range.first == areas->front().range.last;
        require(!is_cell || !numbers_of(call, i).empty(), CellError::Value);
    }
    return Value(most_frequent_of(all_numbers(call)));
}

template <bool is_exclusive, int parts>
Operand percentile(Call& call)
{
    const double part = parts == 1 ? call.number(1) : std::trunc(call.number(1)) / parts;
    return Value(percentile_of(numbers_of(call, 0), part, is_exclusive));
}

Operand square_sum(Call& call)
{
    double result = 0;
    for (const double number : all_numbers(call)) result += number * number;
    return Value(result);
}

Operand geometric_mean(Call& call)
{
    const auto numbers = all_numbers(call);
    double sum = 0;
    for (const double number : numbers) {
        require(number > 0);
        sum += std::log(number);
    }
    require(!numbers.empty());
    return Value(std::exp(sum / static_cast<double>(numbers.size())));
}

Operand sum_product(Call& call)
{
    std::vector<ArrayPointer> arrays;
    int rows = 0, columns = 0;
    for (std::size_t i = 0; i < call.size(); ++i) {
        arrays.push_back(call.evaluator().array(call.operand(i)));
        require(arrays[0]->rows() == arrays[i]->rows() && arrays[0]->columns() == arrays[i]->columns(),
                CellError::Value);
        rows = std::max(rows, arrays[i]->stored_rows());
        columns = std::max(columns, arrays[i]->stored_columns());
    }
    const auto product_at = [&](int row, int column) {
        double product = 1;
        for (const auto& array : arrays) {
            const Value& value = array->at(row, column);
            if (const auto* const error = std::get_if<CellError>(&value)) throw ErrorResult{*error};
            const auto* const number = std::get_if<double>(&value);
            product *= number ? *number : 0;
        }
        return product;
    };
    const bool is_one = arrays[0]->rows() == 1 && arrays[0]->columns() == 1;
    for (const auto& array : arrays)
        require(!is_one || !std::holds_alternative<Text>(array->at(0, 0)), CellError::Value);
    double result = 0;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) result += product_at(row, column);
    const auto& first = *arrays[0];
    const double behind = static_cast<double>(first.rows()) * first.columns() - static_cast<double>(rows) * columns;
    if (behind > 0) result += behind * product_at(first.rows() - 1, first.columns() - 1);
    return Value(result);
}

constexpr auto numbers_only = Counted::Numbers;
constexpr auto everything = Counted::Everything;

constexpr Function table[] = {
    {"AVERAGE", 1, 255, "r", average<numbers_only>},
    {"AVERAGEA", 1, 255, "r", average<everything>},
    {"COUNT", 1, 255, "r", count},
    {"COUNTA", 1, 255, "r", count_all},
    {"COUNTBLANK", 1, 1, "r", count_blank},
    {"DEVSQ", 1, 255, "r",
     [](Call& call) -> Operand {
         const auto numbers = all_numbers(call);
         return numbers.empty() ? Value(CellError::Number) : Value(squares_of(numbers));
     }},
    {"GEOMEAN", 1, 255, "r", geometric_mean},
    {"LARGE", 2, 2, "rn", ranked<true>},
    {"MAX", 1, 255, "r", extreme<numbers_only, true>},
    {"MAXA", 1, 255, "r", extreme<everything, true>},
    {"MEDIAN", 1, 255, "r", median},
    {"MIN", 1, 255, "r", extreme<numbers_only, false>},
    {"MINA", 1, 255, "r", extreme<everything, false>},
    {"MODE", 1, 255, "r", mode},
    {"MODE.SNGL", 1, 255, "r", mode},
    {"PERCENTILE", 2, 2, "rn", percentile<false, 1>},
    {"PERCENTILE.EXC", 2, 2, "rn", percentile<true, 1>},
    {"PERCENTILE.INC", 2, 2, "rn", percentile<false, 1>},
    {"PRODUCT", 1, 255, "r", [](Call& call) -> Operand { return Value(product_of(all_numbers(call))); }},
    {"QUARTILE", 2, 2, "rn", percentile<false, 4>},
    {"QUARTILE.EXC", 2, 2, "rn", percentile<true, 4>},
    {"QUARTILE.INC", 2, 2, "rn", percentile<false, 4>},
    {"RANK", 2, 3, "nrn", rank<false>},
    {"RANK.AVG", 2, 3, "nrn", rank<true>},
    {"RANK.EQ", 2, 3, "nrn", rank<false>},
    {"SMALL", 2, 2, "rn", ranked<false>},
    {"STDEV", 1, 255, "r", variance<numbers_only, true, true>},
    {"STDEV.P", 1, 255, "r", variance<numbers_only, false, true>},
    {"STDEV.S", 1, 255, "r", variance<numbers_only, true, true>},
    {"STDEVA", 1, 255, "r", variance<everything, true, true>},
    {"STDEVP", 1, 255, "r", variance<numbers_only, false, true>},
    {"STDEVPA", 1, 255, "r", variance<everything, false, true>},
    {"SUM", 1, 255, "r", sum},
    {"SUMPRODUCT", 1, 255, "a", sum_product},
    {"SUMSQ", 1, 255, "r", square_sum},
    {"VAR", 1, 255, "r", variance<numbers_only, true, false>},
    {"VAR.P", 1, 255, "r", variance<numbers_only, false, false>},
    {"VAR.S", 1, 255, "r", variance<numbers_only, true, false>},
    {"VARA", 1, 255, "r", variance<everything, true, false>},
    {"VARP", 1, 255, "r", variance<numbers_only, false, false>},
    {"VARPA", 1, 255, "r", variance<everything, false, false>},
};

} // namespace

std::span<const Function> statistics_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
