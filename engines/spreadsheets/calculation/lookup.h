#pragma once

#include "engines/spreadsheets/calculation/evaluator.h"

namespace tarvik::calculation {

/// A row or column of values in which lookups search, counting from 0.
class Line {
public:
    /// Of an area or array the first column, or the first row. ErrorResult #N/A for what is neither.
    Line(Evaluator& evaluator, const Operand& operand, bool is_column);

    /// The values up to the last one that is there.
    int size() const noexcept { return size_; }
    Value at(int i) const;
    const Area* area() const noexcept { return array_ ? nullptr : &area_; }
    /// Calls the visitor for those that are there, in order.
    void visit(const std::function<void(int, const Value&)>& visitor) const;

private:
    Evaluator& evaluator_;
    ArrayPointer array_;
    Area area_;
    bool is_column_;
    int size_ = 0;
};

/// The first value equal to the key; a text may be a pattern.
std::optional<int> find_exactly(Evaluator& evaluator, const Line& line, const Value& key, bool takes_patterns);
/// The last of the values not greater than the key, or with `is_falling` not less, by halving: the line is sorted.
std::optional<int> find_sorted(Evaluator& evaluator, const Line& line, const Value& key, bool is_falling);

} // namespace tarvik::calculation
