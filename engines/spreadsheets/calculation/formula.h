#pragma once

#include "engines/spreadsheets/calculation/tree.h"
#include "platform/platform.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik::calculation {

/// A formula that this language cannot calculate. what() names, in UTF-8, the function or the construct: "RAND",
/// "external workbook", "syntax".
struct CannotCalculate final : std::runtime_error {
    using std::runtime_error::runtime_error;
};

using FormulaPointer = std::shared_ptr<const Formula>;

/// A table of a sheet, to which structured references point.
struct Table {
    int sheet = 0;
    Range range; ///< headers and totals included
    int header_rows = 1;
    int totals_rows = 0;
    bool has_filter = false;
    std::vector<Text> columns; ///< as the workbook writes them, from the left
};

/// What formulas call by name. Names are in lower case, as lower() makes it.
struct Names {
    std::map<Text, int> sheets;
    std::map<std::pair<Text, int>, FormulaPointer> formulas; ///< with their sheet, 0 for the workbook's; parsed at A1
    std::map<Text, Table> tables;
};

/// The cells of a workbook as its formulas see them.
class CellSource {
public:
    using Visitor = std::function<void(Place, const Value&)>;

    virtual ~CellSource() = default;

    virtual const Names& names() const = 0;
    /// The value as of now; nothing for a cell that is absent. What a source throws ends the calculation.
    virtual Value value(const CellAddress& cell) const = 0;
    /// The cells in the area that are there, row by row. A huge area costs what is there.
    virtual void visit(int sheet, const Range& area, const Visitor& visitor) const = 0;
    /// The last row and column that hold a cell; {0, 0} for an empty sheet. It may be larger than that, never smaller.
    virtual Place extent(int sheet) const = 0;
    /// Rises whenever the value of a cell changes that had one.
    virtual std::uint64_t revision() const = 0;

    /// Hidden by hand or by a filter; and by a filter alone.
    virtual bool is_row_hidden(int sheet, int row) const = 0;
    virtual bool is_row_filtered(int sheet, int row) const = 0;
    /// The parsed formula of the cell; nullptr for a cell without one.
    virtual FormulaPointer formula(const CellAddress& cell) const = 0;

    /// Whether day 0 is in 1904 and not in 1900.
    virtual bool counts_from_1904() const = 0;
    virtual CalendarTime now() const = 0;
    /// Counts work beyond that of the calls above. CannotCalculate when all of it becomes too much.
    virtual void spend(std::size_t steps) const = 0;
};

/// The formula as a part writes it, in UTF-8 without "=", taken apart as that of the cell at `at`; a name's formula
/// stands at A1. Never nullptr and never an exception: what is no formula gives one that cannot be calculated.
FormulaPointer parse(std::string_view text, Place at);

/// What the reference points at from that cell: areas, or the error that it is instead.
Operand resolve(const AreaReference& reference, const CellAddress& at, const Names& names);
Operand resolve(const TableReference& reference, const CellAddress& at, const Names& names);

/// The formula of the name: the sheet's own, else the workbook's. nullptr when there is none.
FormulaPointer find_formula(const NameReference& name, const CellAddress& at, const Names& names);

using AreaVisitor = std::function<void(int sheet, const Range&)>;
/// The areas that the formula names when it stands at `at`, also through names, tables and rows of sheets, whether or
/// not its result looks at all of them. Some may come twice. Returns whether the formula or one of its names is
/// volatile.
bool visit_areas(const Formula& formula, const CellAddress& at, const Names& names, const AreaVisitor& visitor);

} // namespace tarvik::calculation
