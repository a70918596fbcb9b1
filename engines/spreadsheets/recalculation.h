#pragma once

#include "engines/spreadsheets/calculation/evaluator.h"
#include "engines/spreadsheets/formula_index.h"
#include "engines/spreadsheets/sheet_part.h"

#include <list>

namespace tarvik::ooxml {

/// The results of an opened workbook's formulas, brought up to date when somebody wants them. What a write touches, in
/// whatever chain, is calculated anew; all other results stay as the package holds them.
class Recalculation final : private calculation::CellSource {
public:
    using Number = FormulaIndex::Number;

    Recalculation(std::shared_ptr<const FormulaIndex> index, WorkbookModel& workbook);

    const FormulaIndex& index() const noexcept { return *index_; }
    /// What an array formula or a data table fills that fills more than this cell, or nullptr.
    const Range* filling(int sheet, Place place) const;
    /// To be called when a cell was overwritten or emptied.
    void touch(int sheet, Place place);
    /// Takes all results for old.
    void forget_results();
    /// Brings what fills the range up to date; gives a formula that cannot be calculated, or none.
    Number update(int sheet, const Range& range);
    /// Brings all up to date. What cannot be calculated has no result any more.
    void update_all();

    /// Those that cannot be calculated, with what is in the way: a function's name, mostly.
    const std::map<Number, std::string>& failed() const noexcept { return failed_; }
    /// Takes the results of a formula, which somebody else may have calculated, one for each of its cells.
    void keep(Number number, const std::vector<calculation::Value>& results);

private:
    enum class State : char {
        Current,
        Missing, ///< without a result from the beginning; what depends on it is current
        Old,
        Waiting,   ///< to be calculated for another one
        Suspended, ///< begun, and waits for others
        Failed,
        Overwritten
    };
    using Stack = std::list<Number>;
    /// Thrown into a formula that asks for results that are not there yet. They are calculated first, on a stack of our
    /// own, and then the formula again from its beginning: a chain of any length takes no stack.
    struct NotYetCalculated {
        std::vector<Number> numbers; ///< of an area all that are missing
    };

    State& state(Number number) { return states_[number]; }
    bool is_due(Number number) const { return states_[number] == State::Old || states_[number] == State::Missing; }
    void set_state(Number number, State kind);
    void spread(int sheet, const Range& range, std::vector<Number>& touched);
    void touch(Number number, std::vector<Number>& touched);
    void calculate(Number number);
    void wait_for(const std::vector<Number>& numbers, Stack& stack);
    void fail_cycle(Number number, Stack& stack);
    void fail(Number number, const std::string& reason);
    std::vector<calculation::Value> results_of(const IndexedFormula& formula);
    void require_results(int sheet, const Range& area) const;
    const SheetPart& part(int sheet) const;

    calculation::Value value(const calculation::CellAddress& cell) const override;
    void visit(const calculation::Area& area, const Visitor& visitor) const override;
    Place extent(int sheet) const override;
    std::uint64_t revision() const override { return revision_; }
    const calculation::Names& names() const override { return index_->names(); }
    bool is_left_out(const calculation::CellAddress& cell, const calculation::LeftOut& what) const override;
    bool counts_from_1904() const override { return counts_from_1904_; }
    CalendarTime now() const override;
    void spend(std::size_t steps) const override;

    std::shared_ptr<const FormulaIndex> index_;
    WorkbookModel& workbook_;
    bool counts_from_1904_;
    calculation::AreaMemory memory_;
    std::vector<State> states_;
    std::vector<Stack::iterator> waiting_; // where those that wait stand
    std::vector<RangeSet::Taken> taken_;   // areas of each sheet whose readers are old
    std::map<Number, std::string> failed_;
    std::uint64_t revision_ = 0;
    mutable std::size_t work_ = 0; // of the update, in cells looked at
    bool has_calculated_ = true;   // since areas were last taken
};

} // namespace tarvik::ooxml
