#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/criteria.h"
#include "engines/spreadsheets/calculation/numbers.h"

#include <algorithm>

namespace tarvik::calculation {

namespace {

struct Condition {
    Area area;
    Criterion criterion;
};

/// A cell that meets all conditions, as its distance from the first cell of each area.
using MetVisitor = std::function<void(int row, int column)>;

// Finds the cells of equal areas that meet their conditions.
class Search {
public:
    Search(Call& call, std::vector<Condition> conditions)
        : evaluator_(call.evaluator()), conditions_(std::move(conditions))
    {
    }

    /// Returns how many cells more meet them all behind the last one of their sheets.
    double run(const MetVisitor& visitor)
    {
        if (visit_by_index(visitor)) return 0;
        for (std::size_t i = 0; i < conditions_.size(); ++i) {
            const auto& [area, criterion] = conditions_[i];
            if (criterion.holds(Value())) continue;
            // Absent cells do not meet this one: those that are there are all that matter.
            const Place first = area.range.first;
            evaluator_.visit(area, [&, i, &criterion = criterion](Place place, const Value& value) {
                const int row = place.row - first.row, column = place.column - first.column;
                if (criterion.holds(value) && others_hold(i, row, column)) visitor(row, column);
            });
            return 0;
        }
        return visit_all(visitor);
    }

private:
    bool others_hold(std::size_t but, int row, int column) const
    {
        evaluator_.spend(conditions_.size());
        for (std::size_t i = 0; i < conditions_.size(); ++i) {
            const auto& [area, criterion] = conditions_[i];
            const Place place{area.range.first.row + row, area.range.first.column + column};
            if (i != but && !criterion.holds(evaluator_.cell(area.sheet, place))) return false;
        }
        return true;
    }

    // By the index of the area whose cells are equal to the fewest; a number may also be written as a text.
    bool visit_by_index(const MetVisitor& visitor)
    {
        const AreaIndex::Positions* fewest = nullptr;
        std::size_t chosen = 0;
        for (std::size_t i = 0; i < conditions_.size(); ++i) {
            const auto& [area, criterion] = conditions_[i];
            const Value* const key = criterion.key();
            const auto* const index = key ? evaluator_.memory().find(evaluator_.source(), area) : nullptr;
            if (!index || (std::holds_alternative<double>(*key) && index->has_numbers_as_texts())) continue;
            const auto* const found = index->find(*key);
            if (!found) return true;
            if (fewest && found->size() >= fewest->size()) continue;
            fewest = found;
            chosen = i;
        }
        if (!fewest) return false;
        const int columns = conditions_[chosen].area.columns();
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
                if (others_hold(conditions_.size(), row, column)) visitor(row, column);
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
        const Value value = call.evaluator().cell(area.sheet, place);
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

} // namespace

constinit const std::span<const Function> conditional_functions = table;

} // namespace tarvik::calculation
