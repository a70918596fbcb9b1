#include "engines/spreadsheets/recalculation.h"

#include "engines/spreadsheets/workbook_model.h"

#include <algorithm>

namespace tarvik::ooxml {

using calculation::CannotCalculate;
using calculation::CellAddress;
using calculation::Value;

namespace {

constexpr std::size_t most_work = 300'000'000; // of one update, in cells that it looks at
constexpr long long largest_filled = 100'000;  // cells of an array formula

// A long text, which many cells may share, takes more than one look.
std::size_t work_of(const Value& value) noexcept
{
    constexpr std::size_t characters = 16, usual_text = 256;
    const auto* const text = std::get_if<Text>(&value);
    return text ? 1 + (std::max(text->size(), usual_text) - usual_text) / characters : 1;
}

long long cells_of(const Range& range) noexcept
{
    return (range.last.row - range.first.row + 1LL) * (range.last.column - range.first.column + 1LL);
}

} // namespace

Recalculation::Recalculation(std::shared_ptr<const FormulaIndex> index, WorkbookModel& workbook)
    : index_(std::move(index)), workbook_(workbook), counts_from_1904_(workbook.counts_from_1904()),
      states_(index_->size(), State::Current), taken_(index_->sheet_count())
{
    for (Number number = 0; number < index_->size(); ++number)
        if (!(*index_)[number].has_result) state(number) = State::Missing;
}

void Recalculation::set_state(Number number, State kind)
{
    failed_.erase(number);
    state(number) = kind;
}

const Range* Recalculation::filling(int sheet, Place place) const
{
    const Range* filled = nullptr;
    index_->visit(sheet, {place, place}, [&](Number number) {
        const auto& range = (*index_)[number].range;
        if (range.first != range.last && states_[number] != State::Overwritten) filled = &range;
    });
    return filled;
}

// What depends on an old result is old already, so that each formula is met once until results are calculated.
void Recalculation::touch(int sheet, Place place)
{
    ++revision_;
    index_->visit(sheet, {place, place}, [&](Number number) {
        if ((*index_)[number].place() == place) set_state(number, State::Overwritten);
    });
    std::vector<Number> touched;
    if (has_calculated_) {
        for (auto& taken : taken_) taken = {};
        for (const auto number : index_->volatile_ones()) touch(number, touched);
        has_calculated_ = false;
    }
    spread(sheet, {place, place}, touched);
    while (!touched.empty()) {
        const auto& formula = (*index_)[touched.back()];
        touched.pop_back();
        spread(formula.sheet, formula.range, touched);
    }
}

void Recalculation::forget_results()
{
    for (Number number = 0; number < index_->size(); ++number)
        if (state(number) != State::Overwritten) set_state(number, State::Old);
    ++revision_;
}

void Recalculation::spread(int sheet, const Range& range, std::vector<Number>& touched)
{
    auto& taken = taken_[static_cast<std::size_t>(sheet - 1)];
    index_->areas(sheet).take(range, taken, [&](std::size_t area) { touch(index_->reader(sheet, area), touched); });
}

void Recalculation::touch(Number number, std::vector<Number>& touched)
{
    const bool is_met = state(number) == State::Old || state(number) == State::Overwritten;
    if (is_met) return;
    set_state(number, State::Old);
    touched.push_back(number);
}

FormulaIndex::Number Recalculation::update(int sheet, const Range& range)
{
    std::vector<Number> numbers;
    index_->visit(sheet, range, [&](Number number) { numbers.push_back(number); });
    work_ = 0;
    for (const auto number : numbers) {
        if (is_due(number)) calculate(number);
        if (state(number) == State::Failed) return number;
    }
    return FormulaIndex::none;
}

void Recalculation::update_all()
{
    work_ = 0;
    for (Number number = 0; number < index_->size(); ++number)
        if (is_due(number)) calculate(number);
    for (const auto& [number, reason] : failed_) {
        const auto& formula = (*index_)[number];
        workbook_.sheet(formula.sheet).drop_results(formula.range);
    }
}

// Formulas that others need first stand above them.
void Recalculation::calculate(Number number)
{
    waiting_.resize(states_.size());
    Stack stack{number};
    waiting_[number] = stack.begin();
    state(number) = State::Waiting;
    while (!stack.empty()) {
        const auto top = stack.back();
        state(top) = State::Suspended;
        try {
            const auto results = results_of((*index_)[top]);
            stack.pop_back();
            keep(top, results);
        } catch (const NotYetCalculated& missing) {
            wait_for(missing.numbers, stack);
        } catch (const CannotCalculate& reason) {
            stack.pop_back();
            fail(top, reason.what());
        }
    }
}

void Recalculation::wait_for(const std::vector<Number>& numbers, Stack& stack)
{
    for (auto at = numbers.rbegin(); at != numbers.rend(); ++at) { // the first comes to stand on top
        const auto number = *at;
        switch (state(number)) {
        case State::Missing:
        case State::Old:
            waiting_[number] = stack.insert(stack.end(), number);
            state(number) = State::Waiting;
            break;
        case State::Waiting: stack.splice(stack.end(), stack, waiting_[number]); break;
        default: return fail_cycle(number, stack);
        }
    }
}

// All that are suspended above it wait for each other.
void Recalculation::fail_cycle(Number number, Stack& stack)
{
    bool is_reached = false;
    while (!is_reached) {
        const auto top = stack.back();
        stack.pop_back();
        is_reached = top == number;
        if (state(top) == State::Suspended) fail(top, "cycle");
        else state(top) = State::Old;
    }
}

void Recalculation::fail(Number number, const std::string& reason)
{
    state(number) = State::Failed;
    failed_[number] = reason;
    has_calculated_ = true;
}

std::vector<Value> Recalculation::results_of(const IndexedFormula& formula)
{
    if (!formula.formula) throw CannotCalculate("data table");
    if (cells_of(formula.range) > largest_filled) throw CannotCalculate("large array formula");
    spend(0);
    return calculation::Evaluator{*this, {formula.sheet, formula.place()}, memory_}.results(
        *formula.formula, formula.is_array ? std::optional(formula.range) : std::nullopt);
}

void Recalculation::keep(Number number, const std::vector<Value>& results)
{
    const auto& formula = (*index_)[number];
    auto& part = workbook_.sheet(formula.sheet);
    auto result = results.begin();
    for (int row = formula.range.first.row; row <= formula.range.last.row; ++row)
        for (int column = formula.range.first.column; column <= formula.range.last.column; ++column)
            part.set_result({row, column}, *result++);
    set_state(number, State::Current);
    has_calculated_ = true;
}

void Recalculation::require_results(int sheet, const Range& area) const
{
    NotYetCalculated missing;
    index_->visit(sheet, area, [&](Number number) {
        spend(1);
        const auto state = states_[number];
        if (state == State::Failed) throw CannotCalculate(failed_.at(number));
        if (state != State::Current && state != State::Overwritten) missing.numbers.push_back(number);
    });
    if (!missing.numbers.empty()) throw std::move(missing);
}

const SheetPart& Recalculation::part(int sheet) const
{
    try {
        return workbook_.sheet(sheet);
    } catch (const Damage&) {
        throw CannotCalculate("damaged sheet");
    }
}

Value Recalculation::value(const CellAddress& cell) const
{
    require_results(cell.sheet, {cell.place, cell.place});
    auto value = part(cell.sheet).value(cell.place);
    spend(work_of(value));
    return value;
}

void Recalculation::visit(const calculation::Area& area, const Visitor& visitor) const
{
    require_results(area.sheet, area.range);
    part(area.sheet).visit_values(area.range, [&](Place place, const Value& value) {
        spend(work_of(value));
        visitor(place, value);
    });
}

Place Recalculation::extent(int sheet) const
{
    return part(sheet).cells().extent();
}

CalendarTime Recalculation::now() const
{
    return workbook_.now();
}

void Recalculation::spend(std::size_t steps) const
{
    work_ += steps;
    if (work_ > most_work) throw CannotCalculate("too much work");
}

bool Recalculation::is_left_out(const CellAddress& cell, const calculation::LeftOut& what) const
{
    const auto& held = part(cell.sheet);
    const int row = cell.place.row;
    // A hidden row of a table with a filter is hidden by that.
    const auto is_filtered_table = [&](const auto& one) {
        const auto& [first, last] = one.second.range;
        return one.second.has_filter && one.second.sheet == cell.sheet && row >= first.row && row <= last.row;
    };
    if (held.is_row_hidden(row) &&
        (what.hidden ||
         (what.filtered && (held.is_row_filtered(row) || std::ranges::any_of(names().tables, is_filtered_table)))))
        return true;
    const auto number = what.subtotals ? index_->find(cell.sheet, cell.place) : FormulaIndex::none;
    if (number == FormulaIndex::none || states_[number] == State::Overwritten) return false;
    const auto& formula = (*index_)[number].formula;
    return formula && formula->has_subtotal;
}

} // namespace tarvik::ooxml
