#pragma once

#include "engines/spreadsheets/calculation/coercion.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace tarvik::calculation {

/// Where the values of an area lie: row by row, counting from 0. Cells that are absent or empty are not in it.
struct AreaIndex {
    using Positions = std::vector<std::int64_t>;

    AreaIndex(const CellSource& source, const Area& area);
    /// Rising; nullptr when no cell is equal to the value. Texts are equal without case.
    const Positions* find(const Value& value) const;

    std::unordered_map<Value, Positions> positions; ///< texts in lower case
    std::size_t size = 0;
    bool has_numbers_as_texts = false; ///< some text reads as a number or may do so
};

/// The indexes of areas that were searched more than once, as long as no value changes: one that lives long is fast.
class AreaMemory {
public:
    /// nullptr the first time that the area is asked for, and for one that is not worth it. Valid until the
    /// source's revision rises.
    const AreaIndex* find(const CellSource& source, const Area& area);

private:
    std::map<std::array<int, 5>, std::unique_ptr<AreaIndex>> indexes_; // without one: asked for once
    std::uint64_t revision_ = 0;
    std::size_t size_ = 0; // of all indexes, in cells
};

/// What an area stands for where one value is wanted: the cell in the formula's own row or column, or all of its cells.
enum class Mode { Single, Array };

/// Calculates one formula at one cell.
struct Evaluator {
    const CellSource& source;
    CellAddress at;
    AreaMemory& memory;
    const Node* root = nullptr; ///< of the formula
    int depth = 0;              ///< of calls of evaluate()

    /// Of a usual formula one result; of an array formula those of the cells that it fills, row by row.
    std::vector<Value> results(const Formula& formula, const std::optional<Range>& filled);
    Operand evaluate(const Node& node, Mode mode);

    /// A value or an array: areas become the one or the other.
    Operand valued(Operand operand, Mode mode);
    /// One value: of an array the first, of areas the one that the formula's place points at.
    Value single(const Operand& operand);
    /// Never nullptr.
    ArrayPointer array(const Operand& operand);

    using ValueVisitor = std::function<void(const Value&)>;
    /// The values of all cells that are there, or of the array, or the value itself.
    void visit_values(const Operand& operand, const ValueVisitor& visitor);
    /// The area less the rows and columns behind the last cell of its sheet, but one cell at least.
    Area used(const Area& area) const;

    /// An array that stores so many of its values. CannotCalculate when it would be too large.
    std::shared_ptr<Array> new_array(int rows, int columns, int stored_rows, int stored_columns);
    /// Stores one of them. CannotCalculate when the texts of arrays become too long together.
    void store(Array& array, int row, int column, Value value) const;

private:
    // What a node comes to, by its content, where that is no value or reference.
    static Operand operand(const Missing& /*missing*/, const Node& /*node*/, Mode /*mode*/) { return Value(); }
    static Operand operand(const Uncalculable& what, const Node& /*node*/, Mode /*mode*/)
    {
        throw CannotCalculate(what.reason);
    }
    Operand combined(Operator how, const Operand& left, const Operand& right);
    Operand operand(const NameReference& name, const Node& node, Mode mode);
    Operand operand(const Chain& chain, const Node& node, Mode mode);
    Operand operand(Sign sign, const Node& node, Mode mode);
    Operand operand(ReferenceOperator how, const Node& node, Mode mode);
    Operand operand(const Function* function, const Node& node, Mode mode);
};

/// The value of the element, where a single row or column stands for all; #N/A beyond the array.
const Value& pick(const Array& array, int row, int column) noexcept;

using Element = std::function<Value(int row, int column)>;
/// The array that is as large as the largest of these, each value made by `element`, which reads them by pick().
/// CannotCalculate for too large a one.
Operand for_each_element(std::span<const ArrayPointer> arrays, const Element& element, Evaluator& evaluator);

/// Thrown by functions for an error that is their result.
struct ErrorResult {
    CellError error;
};

/// The value, which is of that kind or an error. ErrorResult for an error.
template <typename Kind>
Kind required(const Value& value)
{
    if (const auto* const error = std::get_if<CellError>(&value)) throw ErrorResult{*error};
    return std::get<Kind>(value);
}

/// A function with its arguments at work. Arguments count from 0; a number is asked for by number() where the
/// function's row says "n", and so on.
class Call {
public:
    Call(Evaluator& calculating, const Node& node, Mode how)
        : evaluator(calculating), mode(how), node_(node), arguments_(node.children.size())
    {
    }

    Evaluator& evaluator;
    const Mode mode;

    std::size_t size() const noexcept { return arguments_.size(); }
    /// Whether nothing stands there, be it between two commas.
    bool is_missing(std::size_t i) const noexcept
    {
        return i >= size() || std::holds_alternative<Missing>(node_.children[i].content);
    }
    const Operand& operand(std::size_t i) const { return arguments_[i]; }
    const Value& value(std::size_t i) const { return std::get<Value>(arguments_[i]); }
    double number(std::size_t i, double otherwise = 0) const
    {
        return i < size() ? std::get<double>(value(i)) : otherwise;
    }
    const Text& text(std::size_t i) const { return std::get<Text>(value(i)); }
    bool truth(std::size_t i, bool otherwise = false) const
    {
        return i < size() ? std::get<bool>(value(i)) : otherwise;
    }
    /// Toward 0. ErrorResult #NUM! beyond the 32 bits.
    int whole(std::size_t i, int otherwise = 0) const;
    /// The one area that the argument points at. ErrorResult #VALUE! when it is none, or its own error.
    const Area& area(std::size_t i) const;

    /// An argument that is taken as "x".
    Operand evaluate(std::size_t i) { return evaluator.evaluate(node_.children[i], mode); }
    using Choice = std::function<std::size_t(const Value&)>;
    /// The argument to which the value of the first one leads, all being taken as "x": it alone is calculated. Of an
    /// array each value leads to one. What stands behind the last argument is FALSE.
    Operand choose(const Choice& choice);

    bool counts_from_1904() const { return evaluator.source.counts_from_1904(); }
    /// The number that the value is or reads as. ErrorResult for an error.
    double to_number(const Value& value) const
    {
        return required<double>(calculation::to_number(value, counts_from_1904()));
    }

    using ArgumentVisitor = std::function<void(const Value& value, bool is_written)>;
    /// The values of the arguments from `begin` to before `end`, and whether each is written there itself.
    void visit_values(std::size_t begin, std::size_t end, const ArgumentVisitor& visitor);

    Operand run(const Function& function);

private:
    bool take(std::size_t i, char kind, const Value& value);
    Operand calculate(const Function& function);

    const Node& node_;
    std::vector<Operand> arguments_;
};

} // namespace tarvik::calculation
