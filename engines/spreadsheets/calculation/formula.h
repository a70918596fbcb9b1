#pragma once

#include "engines/spreadsheets/calculation/source.h"
#include "engines/spreadsheets/calculation/tree.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarvik::calculation {

/// A formula that this language cannot calculate. what() names, in UTF-8, the function or the construct: "RAND",
/// "external workbook", "syntax".
struct CannotCalculate final : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The formula as a part writes it, in UTF-8 without "=", taken apart as that of the cell at `at`; a name's formula
/// stands at A1. Never nullptr and never an exception: what is no formula gives one that cannot be calculated.
FormulaPointer parse(std::string_view text, Place at);

/// What the reference points at from that cell: areas, or the error that it is instead.
Operand resolve(const AreaReference& reference, const CellAddress& at, const Names& names);
Operand resolve(const TableReference& reference, const CellAddress& at, const Names& names);

/// The formula of the name, or nullptr.
FormulaPointer find_formula(const NameReference& name, const CellAddress& at, const Names& names);

using AreaVisitor = std::function<void(int sheet, const Range&)>;
/// The areas that the formula names when it stands at `at`, also through names, tables and rows of sheets, whether or
/// not its result looks at all of them. Some may come twice. Returns whether the formula or one of its names is
/// volatile.
bool visit_areas(const Formula& formula, const CellAddress& at, const Names& names, const AreaVisitor& visitor);

class AreaMemory;

/// Calculates formulas over a source. It remembers where the values of areas that are searched again and again lie, and
/// forgets it when the source's revision rises: one that lives long is fast.
class Calculator {
public:
    explicit Calculator(const CellSource& source);
    Calculator(const Calculator&) = delete;
    Calculator& operator=(const Calculator&) = delete;
    ~Calculator();

    /// How the workbook holds the formula: as a usual one, or as an array formula (t="array"). For a cell of an array
    /// formula over several cells, `row` and `column` count from 0 in its range.
    struct Form {
        bool is_array = false;
        int row = 0, column = 0;
    };

    /// The result at that cell. NotYetCalculated as the source throws it; CannotCalculate.
    Value calculate(const Formula& formula, const CellAddress& at, const Form& form);

private:
    const CellSource& source_;
    std::unique_ptr<AreaMemory> memory_;
};

} // namespace tarvik::calculation
