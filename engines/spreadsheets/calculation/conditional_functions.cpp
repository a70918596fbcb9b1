#include "engines/spreadsheets/calculation/functions.h"

#include <algorithm>

namespace tarvik::calculation {

namespace {

std::optional<double> number_of(const Value& value, bool counts_from_1904)
{
    if (const auto* const number = std::get_if<double>(&value)) return *number;
    const auto* const text = std::get_if<Text>(&value);
    if (!text || text->empty()) return std::nullopt;
    try {
        return parse_number(*text, counts_from_1904);
    } catch (const CannotCalculate&) {
        return std::nullopt; // no date that everybody reads alike
    }
}

/// What COUNTIF and its kin ask of a cell: a value, or a text with an operator before it (">=5", "<>x*").
class Criterion {
public:
    Criterion(const Value& written, bool counts_from_1904) : counts_from_1904_(counts_from_1904)
    {
        const auto* const text = std::get_if<Text>(&written);
        if (!text) {
            operand_ = std::holds_alternative<std::monostate>(written) ? Value(0.0) : written;
            is_key_ = true;
            return;
        }
        TextView rest(*text);
        const auto comparison = take_comparison(rest);
        how_ = comparison.value_or(Operator::Equal);
        if (rest.empty()) {
            takes_empty_text_ = !comparison;
            return;
        }
        const Text word = lower(rest);
        if (const auto number = parse_number(rest, counts_from_1904)) {
            operand_ = *number;
        } else if (word == U"true" || word == U"false") {
            operand_ = word == U"true";
        } else if (const auto error = parse_error(upper(rest))) {
            operand_ = *error;
        } else {
            const Text pattern = rest.str();
            is_pattern_ = pattern.find_first_of(U"*?") != Text::npos;
            operand_ = is_pattern_ ? pattern : unescaped_pattern(pattern);
        }
        is_key_ = how_ == Operator::Equal && !is_pattern_;
    }

    bool holds(const Value& value) const
    {
        if (how_ == Operator::Equal) return is_equal_to(value);
        if (how_ == Operator::NotEqual) {
            // A number that is written as a text equals the number, but is another value too.
            if (std::holds_alternative<double>(operand_)) return !is_equal(operand_, value);
            return !is_equal_to(value);
        }
        if (value.index() != operand_.index() || std::holds_alternative<std::monostate>(operand_) ||
            std::holds_alternative<CellError>(value))
            return false;
        return calculation::holds(how_, compare(value, operand_));
    }
    /// The value that a cell must be equal to, when that is all: it can be looked up.
    const Value* key() const noexcept { return is_key_ ? &operand_ : nullptr; }

private:
    bool is_equal_to(const Value& value) const
    {
        const auto* const text = std::get_if<Text>(&value);
        if (std::holds_alternative<std::monostate>(operand_))
            return std::holds_alternative<std::monostate>(value) || (takes_empty_text_ && text && text->empty());
        if (std::holds_alternative<double>(operand_))
            return number_of(value, counts_from_1904_) == std::get<double>(operand_);
        if (is_pattern_) return text && matches_pattern(std::get<Text>(operand_), *text);
        return is_equal(operand_, value);
    }

    Operator how_ = Operator::Equal;
    Value operand_; // nothing for an absent cell
    bool takes_empty_text_ = false;
    bool is_pattern_ = false;
    bool is_key_ = false;
    bool counts_from_1904_;
};

struct Condition {
    Area area;
    Criterion criterion;
};

/// A cell that meets all conditions, as its distance from the first cell of each area.
using MetVisitor = std::function<void(int row, int column)>;

// Finds the cells of equal areas that meet their conditions.
class Search {
public:
    Search(const Call& call, std::vector<Condition> conditions)
        : evaluator_(call.evaluator), conditions_(std::move(conditions))
    {
    }

    /// Returns how many cells more meet them all behind the last one of their sheets.
    double run(const MetVisitor& visitor)
    {
        if (visit_by_index(visitor)) return 0;
        // Where absent cells do not meet a condition, those that are there are all that matter.
        const auto one =
            std::ranges::find_if(conditions_, [](const auto& each) { return !each.criterion.holds(Value()); });
        if (one == conditions_.end()) return visit_all(visitor);
        evaluator_.source.visit(one->area, [&](Place place, const Value& value) {
            const Place first = one->area.range.first;
            const int row = place.row - first.row, column = place.column - first.column;
            if (one->criterion.holds(value) && others_hold(&*one, row, column)) visitor(row, column);
        });
        return 0;
    }

private:
    bool others_hold(const Condition* but, int row, int column) const
    {
        evaluator_.source.spend(conditions_.size());
        return std::ranges::all_of(conditions_, [&](const Condition& one) {
            const Place first = one.area.range.first;
            return &one == but || one.criterion.holds(evaluator_.source.value(
                                      {one.area.sheet, {first.row + row, first.column + column}}));
        });
    }

    // By the index of the area whose cells are equal to the fewest; a number may also be written as a text.
    bool visit_by_index(const MetVisitor& visitor)
    {
        const AreaIndex::Positions* fewest = nullptr;
        const Condition* chosen = nullptr;
        for (const auto& one : conditions_) {
            const Value* const key = one.criterion.key();
            const auto* const index = key ? evaluator_.memory.find(evaluator_.source, one.area) : nullptr;
            if (!index || (std::holds_alternative<double>(*key) && index->has_numbers_as_texts)) continue;
            const auto* const found = index->find(*key);
            if (!found) return true;
            if (fewest && found->size() >= fewest->size()) continue;
            fewest = found;
            chosen = &one;
        }
        if (!fewest) return false;
        const int columns = chosen->area.columns();
        for (const auto position : *fewest) {
            const int row = static_cast<int>(position / columns), column = static_cast<int>(position % columns);
            if (others_hold(chosen, row, column)) visitor(row, column);
        }
        return true;
    }

    double visit_all(const MetVisitor& visitor)
    {
        const Area& first = conditions_.front().area;
        int rows = 1, columns = 1;
        for (const auto& condition : conditions_) {
            const Area used = evaluator_.used(condition.area);
            rows = std::max(rows, used.rows());
            columns = std::max(columns, used.columns());
        }
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column)
                if (others_hold(nullptr, row, column)) visitor(row, column);
        return static_cast<double>(first.rows()) * first.columns() - static_cast<double>(rows) * columns;
    }

    Evaluator& evaluator_;
    std::vector<Condition> conditions_;
};

// Areas and criteria in turn from that argument on, all areas as large as the first argument.
std::vector<Condition> conditions_from(Call& call, std::size_t first)
{
    const Area& size = call.area(0);
    std::vector<Condition> conditions;
    for (std::size_t i = first; i + 1 < call.size(); i += 2) {
        const Area& area = call.area(i);
        require(area.rows() == size.rows() && area.columns() == size.columns(), CellError::Value);
        conditions.push_back({area, Criterion(call.value(i + 1), call.counts_from_1904())});
    }
    require((call.size() - first) % 2 == 0, CellError::Value);
    return conditions;
}

// What the numbers come to that stand in `area` where the conditions are met.
Operand folded_where_met(Call& call, std::vector<Condition> conditions, const Area& area, Fold fold)
{
    std::vector<double> numbers;
    Search(call, std::move(conditions)).run([&](int row, int column) {
        const Place place{area.range.first.row + row, area.range.first.column + column};
        if (!ooxml::is_on_sheet(place)) return;
        const Value value = call.evaluator.source.value({area.sheet, place});
        if (const auto* const error = std::get_if<CellError>(&value)) throw ErrorResult{*error};
        if (const auto* const number = std::get_if<double>(&value)) numbers.push_back(*number);
    });
    return Value(fold(numbers));
}

Operand count_met(Call& call)
{
    double count = 0;
    const double absent = Search(call, conditions_from(call, 0)).run([&](int, int) { ++count; });
    return Value(count + absent);
}

// SUMIF and AVERAGEIF: the numbers may lie in an area of their own, of which the first cell counts alone.
template <Fold fold>
Operand of_one(Call& call)
{
    const Area& area = call.area(0);
    const Area& numbers = call.is_missing(2) ? area : call.area(2);
    return folded_where_met(call, {{area, Criterion(call.value(1), call.counts_from_1904())}}, numbers, fold);
}

// SUMIFS and its like: the area of the numbers stands first.
template <Fold fold>
Operand of_all(Call& call)
{
    return folded_where_met(call, conditions_from(call, 1), call.area(0), fold);
}

constexpr Function table[] = {
    {"AVERAGEIF", 2, 3, "rer", of_one<mean_of>},
    {"AVERAGEIFS", 3, 255, "r|re", of_all<mean_of>},
    {"COUNTIF", 2, 2, "re", count_met},
    {"COUNTIFS", 2, 254, "|re", count_met},
    {"MAXIFS", 3, 255, "r|re", of_all<largest_of>},
    {"MINIFS", 3, 255, "r|re", of_all<smallest_of>},
    {"SUMIF", 2, 3, "rer", of_one<sum_of>},
    {"SUMIFS", 3, 255, "r|re", of_all<sum_of>},
};
static_assert(std::ranges::is_sorted(table, {}, &Function::name));

} // namespace

constinit const std::span<const Function> conditional_functions = table;

} // namespace tarvik::calculation
