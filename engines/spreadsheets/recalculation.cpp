#include "engines/spreadsheets/recalculation.h"

#include "engines/spreadsheets/workbook_model.h"

#include <algorithm>

namespace tarvik::ooxml {

using calculation::CannotCalculate;
using calculation::CellAddress;
using calculation::NotYetCalculated;
using calculation::Value;

namespace {

constexpr std::uint64_t most_work = 300'000'000; // cells that one update looks at
constexpr long long largest_filled = 100'000;    // cells of an array formula

long long cells_of(const Range& range) noexcept
{
    return (range.last.row - range.first.row + 1LL) * (range.last.column - range.first.column + 1LL);
}

template <typename Work>
void each_cell(const Range& range, Work&& work)
{
    for (int row = range.first.row; row <= range.last.row; ++row)
        for (int column = range.first.column; column <= range.last.column; ++column) work(Place{row, column});
}

} // namespace

Recalculation::Recalculation(std::shared_ptr<const FormulaIndex> index, WorkbookModel& workbook)
    : index_(std::move(index)), workbook_(workbook), counts_from_1904_(workbook.counts_from_1904()), calculator_(*this),
      states_(index_->size(), State::Current), sheets_(index_->sheet_count())
{
    for (Number number = 0; number < index_->size(); ++number)
        if (!(*index_)[number].has_result) make_old(number, State::Missing);
}

void Recalculation::make_old(Number number, State kind)
{
    const auto& formula = (*index_)[number];
    if (state(number) == State::Failed) failed_.erase(number);
    state(number) = kind;
    auto& old = sheets_[static_cast<std::size_t>(formula.sheet - 1)].old;
    if (cells_of(formula.range) > largest_filled) old.emplace(formula.place().column, formula.place().row);
    else each_cell(formula.range, [&old](Place place) { old.emplace(place.column, place.row); });
}

void Recalculation::touch(int sheet, Place place)
{
    constexpr std::size_t most_kept = 4096;
    ++revision_;
    if (index_->size() == 0) return;
    const auto number = index_->find(sheet, place);
    if (number != FormulaIndex::none && (*index_)[number].place() == place) {
        failed_.erase(number);
        state(number) = State::Overwritten;
        each_cell((*index_)[number].range, [&](Place one) {
            sheets_[static_cast<std::size_t>(sheet - 1)].old.erase({one.column, one.row});
        });
    }
    written_.push_back({sheet, place});
    if (written_.size() >= most_kept) spread();
}

void Recalculation::forget_results()
{
    for (Number number = 0; number < index_->size(); ++number)
        if (state(number) != State::Overwritten) make_old(number);
    ++revision_;
}

// What depends on an old result is old already, so that each formula is met once.
void Recalculation::spread()
{
    if (written_.empty()) return;
    if (has_calculated_) {
        for (auto& sheet : sheets_) sheet.taken = {};
        has_calculated_ = false;
    }
    std::vector<Number> touched;
    for (const auto number : index_->volatile_ones()) touch(number, touched);
    for (const auto& cell : std::exchange(written_, {})) spread(cell.sheet, {cell.place, cell.place}, touched);
    while (!touched.empty()) {
        const auto& formula = (*index_)[touched.back()];
        touched.pop_back();
        spread(formula.sheet, formula.range, touched);
    }
    ++revision_;
}

void Recalculation::spread(int sheet, const Range& range, std::vector<Number>& touched)
{
    auto& taken = sheets_[static_cast<std::size_t>(sheet - 1)].taken;
    index_->areas(sheet).take(range, taken, [&](std::size_t area) { touch(index_->reader(sheet, area), touched); });
}

void Recalculation::touch(Number number, std::vector<Number>& touched)
{
    const bool is_met = state(number) == State::Old || state(number) == State::Overwritten;
    if (is_met) return;
    make_old(number);
    touched.push_back(number);
}

FormulaIndex::Number Recalculation::update(int sheet, const Range& range)
{
    const bool is_cell = range.first == range.last;
    const auto numbers = is_cell ? std::vector{index_->find(sheet, range.first)} : index_->find(sheet, range);
    work_ = 0;
    for (const auto number : numbers) {
        if (number == FormulaIndex::none) continue;
        spread();
        if (is_due(number)) calculate(number);
        if (state(number) == State::Failed) return number;
    }
    return FormulaIndex::none;
}

void Recalculation::update_all()
{
    spread();
    work_ = 0;
    for (Number number = 0; number < index_->size(); ++number)
        if (is_due(number)) calculate(number);
    for (const auto& [number, reason] : failed_) {
        const auto& formula = (*index_)[number];
        workbook_.sheet(formula.sheet).drop_results(formula.range);
    }
}

// Formulas that others need first stand above them on a stack of our own.
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
            wait_for(missing.cells, stack);
        } catch (const CannotCalculate& reason) {
            stack.pop_back();
            fail(top, reason.what());
        }
    }
}

void Recalculation::wait_for(const std::vector<CellAddress>& cells, Stack& stack)
{
    for (auto cell = cells.rbegin(); cell != cells.rend(); ++cell) { // the first comes to stand on top
        const auto number = index_->find(cell->sheet, cell->place);
        if (number == FormulaIndex::none) throw std::logic_error("a cell without a formula has no result");
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
    if (work_ > most_work) throw CannotCalculate("too many cells");
    const CellAddress at{formula.sheet, formula.place()};
    if (!formula.is_array) return {calculator_.calculate(*formula.formula, at, {})};
    calculation::Calculator::Form form{.is_array = true};
    std::vector<Value> results;
    each_cell(formula.range, [&](Place place) {
        form.row = place.row - at.place.row;
        form.column = place.column - at.place.column;
        results.push_back(calculator_.calculate(*formula.formula, at, form));
    });
    return results;
}

void Recalculation::keep(Number number, const std::vector<Value>& results)
{
    const auto& formula = (*index_)[number];
    auto& part = workbook_.sheet(formula.sheet);
    auto& old = sheets_[static_cast<std::size_t>(formula.sheet - 1)].old;
    auto result = results.begin();
    each_cell(formula.range, [&](Place place) {
        part.set_result(place, *result++);
        old.erase({place.column, place.row});
    });
    state(number) = State::Current;
    has_calculated_ = true;
}

void Recalculation::take_results(Number number, const std::vector<Value>& results)
{
    failed_.erase(number);
    keep(number, results);
}

std::vector<FormulaIndex::Number> Recalculation::old_ones_in(int sheet, const Range& area) const
{
    const auto& old = sheets_[static_cast<std::size_t>(sheet - 1)].old;
    std::vector<Number> numbers;
    for (auto one = old.lower_bound({area.first.column, area.first.row});
         one != old.end() && one->first <= area.last.column;) {
        const auto [column, row] = *one;
        if (row < area.first.row) one = old.lower_bound({column, area.first.row});
        else if (row > area.last.row) one = old.lower_bound({column + 1, area.first.row});
        else {
            numbers.push_back(index_->find(sheet, Place{row, column}));
            ++one;
        }
    }
    std::ranges::sort(numbers);
    return numbers;
}

void Recalculation::require_results(int sheet, const Range& area) const
{
    NotYetCalculated missing;
    for (const auto number : old_ones_in(sheet, area)) {
        if (states_[number] == State::Failed) throw CannotCalculate(failed_.at(number));
        const CellAddress cell{sheet, (*index_)[number].place()};
        if (missing.cells.empty() || missing.cells.back() != cell) missing.cells.push_back(cell);
    }
    if (!missing.cells.empty()) throw std::move(missing);
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
    ++work_;
    require_results(cell.sheet, {cell.place, cell.place});
    return part(cell.sheet).value(cell.place);
}

void Recalculation::visit(int sheet, const Range& area, const Visitor& visitor) const
{
    require_results(sheet, area);
    part(sheet).visit_values(area, [&](Place place, const Value& value) {
        if (++work_ > most_work) throw CannotCalculate("too many cells");
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

bool Recalculation::is_row_hidden(int sheet, int row) const
{
    return part(sheet).is_row_hidden(row);
}

bool Recalculation::is_row_filtered(int sheet, int row) const
{
    // A hidden row of a table with a filter is hidden by that.
    return part(sheet).is_row_filtered(row) ||
           (part(sheet).is_row_hidden(row) && std::ranges::any_of(names().tables, [=](const auto& one) {
                const auto& [first, last] = one.second.range;
                return one.second.has_filter && one.second.sheet == sheet && row >= first.row && row <= last.row;
            }));
}

calculation::FormulaPointer Recalculation::formula(const CellAddress& cell) const
{
    const auto number = index_->find(cell.sheet, cell.place);
    if (number == FormulaIndex::none || states_[number] == State::Overwritten) return nullptr;
    return (*index_)[number].formula;
}

} // namespace tarvik::ooxml
