#pragma once

#include "engines/spreadsheets/calculation/value.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tarvik::calculation {

class Call;

/// A row of the table of functions.
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

/// A reference as it is written. A row or column that is not fixed is the distance from the formula's own cell.
struct AreaReference {
    struct Corner {
        int row = 0, column = 0;
        bool is_row_fixed = true, is_column_fixed = true;

        friend bool operator==(const Corner&, const Corner&) = default;
    };

    Text first_sheet, last_sheet; ///< in lower case, empty for the formula's own sheet
    Corner first, last;
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
struct Chain {
    std::vector<Operator> operators;
};

enum class Sign { Plus, Minus, Percent };

enum class ReferenceOperator { Between, Union, Intersection };

struct FunctionCall {
    const Function* function = nullptr; ///< nullptr: unknown
    std::string name;
};

/// What cannot be calculated; it is none of the formula's business as long as nobody asks for its value.
struct Uncalculable {
    std::string reason;
};

struct Node {
    std::variant<Missing, Value, ArrayPointer, AreaReference, NameReference, TableReference, Chain, Sign,
                 ReferenceOperator, FunctionCall, Uncalculable>
        content;
    std::vector<Node> children;
};

/// A formula taken apart. It keeps relative references as distances from its cell: the cells that share a formula share
/// one of these.
struct Formula {
    Node root;
    /// Its result may change though no cell that it names does: it holds TODAY, NOW or a reference that is only known
    /// when calculated (OFFSET, INDIRECT).
    bool is_volatile = false;
    /// Whether it calls SUBTOTAL or AGGREGATE, whose areas leave out the cells of other such formulas.
    bool has_subtotal = false;
};

} // namespace tarvik::calculation
