#pragma once

#include "engines/spreadsheets/calculation/evaluator.h"

namespace tarvik::calculation {

/// An area, an array or a value as lookups see it: rows and columns, counting from 0.
class Grid {
public:
    /// ErrorResult for several areas, and for an error.
    Grid(Evaluator& evaluator, const Operand& operand);

    int rows() const noexcept { return rows_; }
    int columns() const noexcept { return columns_; }
    bool is_array() const noexcept { return array_ != nullptr; }
    /// Of an area an area, else an array or a value.
    Operand part(int row, int column, int rows, int columns) const;
    /// The cell so far down and across, or with is_column false the other way round.
    Operand cell(int along, int across, bool is_column) const
    {
        return is_column ? part(along, across, 1, 1) : part(across, along, 1, 1);
    }

    // In the first column, or with is_column false in the first row:

    /// The first value equal to the key; a text may be a pattern.
    std::optional<int> find_exactly(const Value& key, bool is_column, bool takes_patterns) const;
    /// The last of the values not greater than the key, or with `is_falling` not less, by halving: they are sorted.
    std::optional<int> find_sorted(const Value& key, bool is_column, bool is_falling) const;

private:
    Area line(bool is_column) const;
    Value at(int along, bool is_column) const;

    Evaluator& evaluator_;
    ArrayPointer array_; // nullptr for an area
    Area area_;
    int rows_ = 1, columns_ = 1;
};

} // namespace tarvik::calculation
