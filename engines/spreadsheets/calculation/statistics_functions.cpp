#include "engines/spreadsheets/calculation/functions.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvik::calculation {

namespace {

template <Fold fold, Counted counted = Counted::Numbers>
Operand folded(Call& call)
{
    return Value(fold(numbers_of(call, 0, call.size(), counted)));
}

Operand count(Call& call)
{
    double result = 0;
    call.visit_values(0, call.size(), [&](const Value& value, bool is_written) {
        const Value number = is_written ? to_number(value, call.counts_from_1904()) : value;
        if (std::holds_alternative<double>(number)) ++result;
    });
    return result;
}

Operand count_all(Call& call)
{
    double result = 0;
    call.visit_values(0, call.size(), [&](const Value& value, bool is_written) {
        if (is_written || !std::holds_alternative<std::monostate>(value)) ++result;
    });
    return result;
}

Operand count_blank(Call& call)
{
    const Area& area = call.area(0);
    double result = static_cast<double>(area.rows()) * area.columns();
    call.evaluator.source.visit(area, [&](Place, const Value& value) {
        const auto* const text = std::get_if<Text>(&value);
        if (!std::holds_alternative<std::monostate>(value) && !(text && text->empty())) --result;
    });
    return Value(result);
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
    const bool is_rising = call.number(2) != 0;
    double before = 0, equal = 0;
    for (const double other : numbers_of(call, 1)) {
        if (other == number) ++equal;
        if (is_rising ? other < number : other > number) ++before;
    }
    require(equal > 0, CellError::NotAvailable);
    return Value(before + (is_average ? (equal + 1) / 2 : 1));
}

// A text, and one cell without a number, are no arguments.
Operand mode(Call& call)
{
    for (std::size_t i = 0; i < call.size(); ++i) {
        const auto* const value = std::get_if<Value>(&call.operand(i));
        require(!value || !std::holds_alternative<Text>(*value), CellError::Value);
        const auto* const areas = std::get_if<Areas>(&call.operand(i));
        require(!areas || !is_one_cell(*areas) || !numbers_of(call, i).empty(), CellError::Value);
    }
    return Value(most_frequent_of(numbers_of(call, 0, call.size())));
}

template <bool is_exclusive, int parts>
Operand percentile(Call& call)
{
    const double part = parts == 1 ? call.number(1) : std::trunc(call.number(1)) / parts;
    return Value(percentile_of(numbers_of(call, 0), part, is_exclusive));
}

Operand sum_product(Call& call)
{
    std::vector<ArrayPointer> arrays;
    int rows = 0, columns = 0;
    for (std::size_t i = 0; i < call.size(); ++i) {
        arrays.push_back(call.evaluator.array(call.operand(i)));
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

std::vector<double> numbers_among(const std::vector<Value>& values)
{
    std::vector<double> numbers;
    for (const auto& value : values) {
        if (const auto* const number = std::get_if<double>(&value)) numbers.push_back(*number);
        if (const auto* const error = std::get_if<CellError>(&value)) throw ErrorResult{*error};
    }
    return numbers;
}

std::vector<Value> subtotal_values(const Call& call, std::size_t begin, std::size_t end, const LeftOut& left_out,
                                   bool skips_errors = false)
{
    std::vector<Value> values;
    const auto append = [&](const Value& value) {
        if (!(skips_errors && std::holds_alternative<CellError>(value))) values.push_back(value);
    };
    for (std::size_t i = begin; i < end; ++i) {
        const auto* const areas = std::get_if<Areas>(&call.operand(i));
        if (!areas) {
            call.evaluator.visit_values(call.operand(i), append);
            continue;
        }
        for (const auto& area : *areas) {
            call.evaluator.source.visit(area, [&](Place place, const Value& value) {
                if (!call.evaluator.source.is_left_out({area.sheet, place}, left_out)) append(value);
            });
        }
    }
    return values;
}

// Subtotals take it from the sum of squares, to whose last digits spreadsheet applications round; where that would lose
// more than digits, from the distances.
template <bool is_sample>
double variance_of_sums(const std::vector<double>& numbers)
{
    const auto count = static_cast<double>(numbers.size());
    const double squares = sum_of_squares(numbers), sum = sum_of(numbers), distances = squares - sum * sum / count;
    if (count < 2 || distances < squares / 1000) return variance<is_sample>(numbers);
    return distances / (count - (is_sample ? 1 : 0));
}

// Kinds 1 to 13: the numbers by which the function to take is named. Two count, and take other values too.
Value subtotal_of(int kind, const std::vector<Value>& values)
{
    constexpr std::array<Fold, 13> folds{mean_of,
                                         nullptr,
                                         nullptr,
                                         largest_of,
                                         smallest_of,
                                         product_of,
                                         deviation<variance_of_sums<true>>,
                                         deviation<variance_of_sums<false>>,
                                         sum_of,
                                         variance_of_sums<true>,
                                         variance_of_sums<false>,
                                         median_of,
                                         most_frequent_of};
    if (const Fold fold = folds.at(static_cast<std::size_t>(kind) - 1)) return fold(numbers_among(values));
    return static_cast<double>(std::ranges::count_if(values, [kind](const Value& value) {
        return kind == 2 ? std::holds_alternative<double>(value) : !std::holds_alternative<std::monostate>(value);
    }));
}

Operand subtotal(Call& call)
{
    const int code = call.whole(0);
    const bool skips_hidden = code > 100;
    const auto values =
        subtotal_values(call, 1, call.size(), {.hidden = skips_hidden, .filtered = true, .subtotals = true});
    const int kind = skips_hidden ? code - 100 : code;
    require(kind >= 1 && kind <= 11, CellError::Value);
    return subtotal_of(kind, values);
}

Operand aggregate(Call& call)
{
    const int kind = call.whole(0), option = call.whole(1);
    require(kind >= 1 && kind <= 19 && option >= 0 && option <= 7, CellError::Value);
    const bool skips_errors = option == 2 || option == 3 || option > 5, skips_hidden = option % 2 == 1;
    const auto values =
        subtotal_values(call, 2, kind < 14 ? call.size() : 3,
                        {.hidden = skips_hidden, .filtered = skips_hidden, .subtotals = option < 4}, skips_errors);
    if (kind < 14) return subtotal_of(kind, values);
    require(call.size() == 4, CellError::Value);
    const double place = call.to_number(call.evaluator.single(call.operand(3)));
    const auto numbers = numbers_among(values);
    if (kind < 16) return Value(ranked_of(numbers, std::floor(place), kind == 14));
    return Value(percentile_of(numbers, kind % 2 == 1 ? std::trunc(place) / 4 : place, kind > 17));
}

constexpr Function table[] = {
    {"AGGREGATE", 3, 255, "nnar", aggregate},
    {"AVERAGE", 1, 255, "r", folded<mean_of>},
    {"AVERAGEA", 1, 255, "r", folded<mean_of, Counted::Everything>},
    {"COUNT", 1, 255, "r", count},
    {"COUNTA", 1, 255, "r", count_all},
    {"COUNTBLANK", 1, 1, "r", count_blank},
    {"DEVSQ", 1, 255, "r", folded<squared_distances>},
    {"LARGE", 2, 2, "rn", ranked<true>},
    {"MAX", 1, 255, "r", folded<largest_of>},
    {"MAXA", 1, 255, "r", folded<largest_of, Counted::Everything>},
    {"MEDIAN", 1, 255, "r", folded<median_of>},
    {"MIN", 1, 255, "r", folded<smallest_of>},
    {"MINA", 1, 255, "r", folded<smallest_of, Counted::Everything>},
    {"MODE", 1, 255, "r", mode},
    {"MODE.SNGL", 1, 255, "r", mode},
    {"PERCENTILE", 2, 2, "rn", percentile<false, 1>},
    {"PERCENTILE.EXC", 2, 2, "rn", percentile<true, 1>},
    {"PERCENTILE.INC", 2, 2, "rn", percentile<false, 1>},
    {"PRODUCT", 1, 255, "r", folded<product_of>},
    {"QUARTILE", 2, 2, "rn", percentile<false, 4>},
    {"QUARTILE.EXC", 2, 2, "rn", percentile<true, 4>},
    {"QUARTILE.INC", 2, 2, "rn", percentile<false, 4>},
    {"RANK", 2, 3, "nrn", rank<false>},
    {"RANK.AVG", 2, 3, "nrn", rank<true>},
    {"RANK.EQ", 2, 3, "nrn", rank<false>},
    {"SMALL", 2, 2, "rn", ranked<false>},
    {"STDEV", 1, 255, "r", folded<deviation<variance<true>>>},
    {"STDEV.P", 1, 255, "r", folded<deviation<variance<false>>>},
    {"STDEV.S", 1, 255, "r", folded<deviation<variance<true>>>},
    {"STDEVP", 1, 255, "r", folded<deviation<variance<false>>>},
    {"SUBTOTAL", 2, 255, "nr", subtotal},
    {"SUM", 1, 255, "r", folded<sum_of>},
    {"SUMPRODUCT", 1, 255, "a", sum_product},
    {"SUMSQ", 1, 255, "r", folded<sum_of_squares>},
    {"VAR", 1, 255, "r", folded<variance<true>>},
    {"VAR.P", 1, 255, "r", folded<variance<false>>},
    {"VAR.S", 1, 255, "r", folded<variance<true>>},
    {"VARP", 1, 255, "r", folded<variance<false>>},
};
static_assert(std::ranges::is_sorted(table, {}, &Function::name));

} // namespace

constinit const std::span<const Function> statistics_functions = table;

} // namespace tarvik::calculation
