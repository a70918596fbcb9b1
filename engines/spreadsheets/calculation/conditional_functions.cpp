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

    void run(const MetVisitor& visitor)
    {
        if (visit_by_index(visitor)) return;
        for (std::size_t i = 0; i < conditions_.size(); ++i) {
            if (conditions_[i].criterion.holds(Value())) continue;
            // Absent cells do not meet this one: those that are there are all that matter.
            const Area& area = conditions_[i].area;
            const Criterion& criterion = conditions_[i].criterion;
            evaluator_.visit(area, [&, i](Place place, const Value& value) {
                const int row = place.row - area.range.first.row, column = place.column - area.range.first.column;
                if (criterion.holds(value) && others_hold(i, row, column)) visitor(row, column);
            });
            return;
        }
        visit_all(visitor);
    }

    /// Cells behind the last one of their sheets, all of which meet the conditions: run() leaves them out.
    double absent() const noexcept { return absent_; }

private:
    Value value_at(const Area& area, int row, int column) const
    {
        return evaluator_.cell(area.sheet, {area.range.first.row + row, area.range.first.column + column});
    }

    bool others_hold(std::size_t but, int row, int column) const
    {
        evaluator_.spend(conditions_.size());
        for (std::size_t i = 0; i < conditions_.size(); ++i)
            if (i != but && !conditions_[i].criterion.holds(value_at(conditions_[i].area, row, column))) return false;
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
            if (!key) continue;
            const auto* const index = evaluator_.memory().find(evaluator_.source(), area);
            if (!index || (std::holds_alternative<double>(*key) && index->has_numbers_as_texts())) continue;
            const auto* const found = index->find(*key);
            if (!found) return true;
            if (!fewest || found->size() < fewest->size()) {
                fewest = found;
                chosen = i;
            }
        }
        if (!fewest) return false;
        const int columns = conditions_[chosen].area.columns();
        for (const auto position : *fewest) {
            const int row = static_cast<int>(position / columns), column = static_cast<int>(position % columns);
            if (others_hold(chosen, row, column)) visitor(row, column);
        }
        return true;
    }

    void visit_all(const MetVisitor& visitor)
    {
        const Area& first = conditions_.front().area;
        int rows = 1, columns = 1;
        for (const auto& condition : conditions_) {
            const Area used = evaluator_.used(condition.area);
            rows = std::max(rows, used.rows());
            columns = std::max(columns, used.columns());
        }
        absent_ = static_cast<double>(first.rows()) * first.columns() - static_cast<double>(rows) * columns;
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column)
                if (others_hold(conditions_.size(), row, column)) visitor(row, column);
    }

    Evaluator& evaluator_;
    std::vector<Condition> conditions_;
    double absent_ = 0;
};

// Areas and criteria in turn from that argument on.
std::vector<Condition> conditions_from(Call& call, std::size_t first)
{
    std::vector<Condition> conditions;
    for (std::size_t i = first; i + 1 < call.size(); i += 2) {
        const Area& area = call.area(i);
        require(conditions.empty() || (conditions.front().area.rows() == area.rows() &&
                                       conditions.front().area.columns() == area.columns()),
                CellError::Value);
        conditions.push_back({area, Criterion(call.value(i + 1), call.counts_from_1904())});
    }
    require((call.size() - first) % 2 == 0, CellError::Value);
    return conditions;
}

// The numbers at the places of `area` where the conditions are met.
void visit_met(Call& call, std::vector<Condition> conditions, const Area& area, const NumberVisitor& visitor)
{
    Search(call, std::move(conditions)).run([&](int row, int column) {
        const Place place{area.range.first.row + row, area.range.first.column + column};
        if (!ooxml::is_on_sheet(place)) return;
        const Value value = call.evaluator().cell(area.sheet, place);
        if (const auto* const error = std::get_if<CellError>(&value)) throw ErrorResult{*error};
        if (const auto* const number = std::get_if<double>(&value)) visitor(*number);
    });
}

Operand count_met(Call& call)
{
    double count = 0;
    Search search(call, conditions_from(call, 0));
    search.run([&](int, int) { ++count; });
    return Value(count + search.absent());
}

struct Total {
    double sum = 0, count = 0;
    void operator()(double number)
    {
        sum += number;
        ++count;
    }
};

Operand average_of(const Total& total)
{
    require(total.count > 0, CellError::DivisionByZero);
    return Value(total.sum / total.count);
}

// SUMIF and AVERAGEIF: the numbers may lie in an area of their own, of which the first cell counts alone.
Total total_of_one(Call& call)
{
    const Area& area = call.area(0);
    const Area& numbers = call.size() > 2 && !call.is_missing(2) ? call.area(2) : area;
    Total total;
    visit_met(call, {{area, Criterion(call.value(1), call.counts_from_1904())}}, numbers, std::ref(total));
    return total;
}

// SUMIFS and its like: the area of the numbers stands first and is as large as the others.
Total total_of_all(Call& call)
{
    auto conditions = conditions_from(call, 1);
    const Area& numbers = call.area(0);
    require(numbers.rows() == conditions.front().area.rows() && numbers.columns() == conditions.front().area.columns(),
            CellError::Value);
    Total total;
    visit_met(call, std::move(conditions), numbers, std::ref(total));
    return total;
}

template <bool is_largest>
Operand extreme(Call& call)
{
    auto conditions = conditions_from(call, 1);
    const Area& numbers = call.area(0);
    require(numbers.rows() == conditions.front().area.rows() && numbers.columns() == conditions.front().area.columns(),
            CellError::Value);
    std::optional<double> result;
    visit_met(call, std::move(conditions), numbers, [&](double number) {
        if (!result || (is_largest ? number > *result : number < *result)) result = number;
    });
    return Value(result.value_or(0));
}

constexpr Function table[] = {
    {"AVERAGEIF", 2, 3, "rer", [](Call& call) { return average_of(total_of_one(call)); }},
    {"AVERAGEIFS", 3, 255, "r|re", [](Call& call) { return average_of(total_of_all(call)); }},
    {"COUNTIF", 2, 2, "re", count_met},
    {"COUNTIFS", 2, 254, "|re", count_met},
    {"MAXIFS", 3, 255, "r|re", extreme<true>},
    {"MINIFS", 3, 255, "r|re", extreme<false>},
    {"SUMIF", 2, 3, "rer", [](Call& call) -> Operand { return Value(total_of_one(call).sum); }},
    {"SUMIFS", 3, 255, "r|re", [](Call& call) -> Operand { return Value(total_of_all(call).sum); }},
};

} // namespace

std::span<const Function> conditional_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
