#pragma once

#include "engines/spreadsheets/calculation/value.h"
#include "platform/platform.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tarvik::calculation {

class Call;

/// A row of a table of functions, which is sorted by their names.
struct Function {
    std::string_view name;
    int least, most; ///< arguments
    /// How each argument is taken; those behind "|" over and over, else the last one.
    /// n a number, t a text, l a truth value, v any one value; their errors are the function's result.
    /// e one value, an error too. Of these an array gives an array of results.
    /// r as it comes: areas, an array or a value; a the same, with the operators in it working on whole arrays.
    /// x not calculated before the function asks for it.
    std::string_view kinds;
    Operand (*calculate)(Call& call);
    bool is_volatile = false;
};

/// By its name in capitals, without the prefixes that files put before newer ones; nullptr when there is none.
const Function* find_function(std::string_view name) noexcept;

extern const std::span<const Function> logic_functions;
extern const std::span<const Function> mathematics_functions; ///< and of finance
extern const std::span<const Function> statistics_functions;
extern const std::span<const Function> conditional_functions;
extern const std::span<const Function> lookup_functions;
extern const std::span<const Function> text_functions;
extern const std::span<const Function> date_functions;

/// An argument that is left out between two commas.
struct Missing {};

/// One corner of a reference: a column, a row or both, each with or without "$".
struct Corner {
    std::optional<int> column, row;
    bool is_column_fixed = false, is_row_fixed = false;

    bool is_cell() const noexcept { return column && row; }
    /// As it reads when the formula's cell moves by so much. One that leaves the sheet comes back in at the other side.
    Corner moved(int rows, int columns) const noexcept;
    friend bool operator==(const Corner&, const Corner&) = default;
};

/// A reference as it is written in the formula of the cell `home`.
struct AreaReference {
    Text first_sheet, last_sheet; ///< in lower case, empty for the formula's own sheet
    Corner first, last;
    Place home;
};

struct NameReference {
    Text sheet; ///< in lower case; empty when the name stands alone
    Text name;
};

struct TableReference {
    Text table;
    bool headers = false, data = false, totals = false, this_row = false;
    Text first_column, last_column; ///< in lower case; empty for all
};

enum class Operator {
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Join,
    Add,
    Subtract,
    Multiply,
    Divide,
    Power
};

/// Operators of one precedence, from left to right: one more child than operators. Long sums do not nest.
using Chain = std::vector<Operator>;

enum class Sign { Plus, Minus, Percent };

enum class ReferenceOperator { Between, Union, Intersection };

/// What cannot be calculated; it is none of the formula's business as long as nobody asks for its value.
struct Uncalculable {
    std::string reason;
};

struct Node {
    std::variant<Missing, Value, ArrayPointer, AreaReference, NameReference, TableReference, Chain, Sign,
                 ReferenceOperator, const Function*, Uncalculable>
        content;
    std::vector<Node> children;
};

/// A formula taken apart; the cells that share a formula share one of these.
struct Formula {
    Node root;
    /// Its result may change though no cell that it names does: it holds TODAY, NOW or a reference that is only known
    /// when calculated (OFFSET, INDIRECT).
    bool is_volatile = false;
    /// Whether it calls SUBTOTAL or AGGREGATE.
    bool has_subtotal = false;
};

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

/// What SUBTOTAL and AGGREGATE leave out of their areas: rows hidden by hand or by a filter, those hidden by a filter
/// alone, and the cells of other such formulas.
struct LeftOut {
    bool hidden = false, filtered = false, subtotals = false;
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
    virtual void visit(const Area& area, const Visitor& visitor) const = 0;
    /// The last row and column that hold a cell; {0, 0} for an empty sheet. It may be larger than that, never smaller.
    virtual Place extent(int sheet) const = 0;
    /// Rises whenever the value of a cell changes that had one.
    virtual std::uint64_t revision() const = 0;

    virtual bool is_left_out(const CellAddress& cell, const LeftOut& what) const = 0;

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

using AreaVisitor = std::function<void(const Area&)>;
/// The areas that the formula names when it stands at `at`, also through names, tables and rows of sheets, whether or
/// not its result looks at all of them. Some may come twice. Returns whether the formula or one of its names is
/// volatile.
bool visit_areas(const Formula& formula, const CellAddress& at, const Names& names, const AreaVisitor& visitor);

} // namespace tarvik::calculation
