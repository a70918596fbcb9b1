#pragma once

#include "engines/spreadsheets/calculation/value.h"

#include <memory>
#include <variant>
#include <vector>

namespace tarvik::calculation {

struct Area {
    int sheet = 0;
    Range range;

    int rows() const noexcept { return range.last.row - range.first.row + 1; }
    int columns() const noexcept { return range.last.column - range.first.column + 1; }
    friend bool operator==(const Area&, const Area&) = default;
};

/// What a reference points at: one area, or several of a union or a row of sheets.
using Areas = std::vector<Area>;

/// Values in rows and columns, counting from 0. Those beyond the stored ones are all the same: an array of a whole
/// column takes only the memory of what the sheet holds.
class Array {
public:
    Array(int rows, int columns, int stored_rows, int stored_columns, Value rest = {})
        : rows_(rows), columns_(columns), stored_rows_(stored_rows), stored_columns_(stored_columns),
          values_(static_cast<std::size_t>(stored_rows) * static_cast<std::size_t>(stored_columns)),
          rest_(std::move(rest))
    {
    }
    Array(int rows, int columns) : Array(rows, columns, rows, columns) {}

    int rows() const noexcept { return rows_; }
    int columns() const noexcept { return columns_; }
    int stored_rows() const noexcept { return stored_rows_; }
    int stored_columns() const noexcept { return stored_columns_; }

    const Value& at(int row, int column) const noexcept
    {
        return row < stored_rows_ && column < stored_columns_ ? values_[index(row, column)] : rest_;
    }
    Value& stored(int row, int column) noexcept { return values_[index(row, column)]; }
    void set_rest(Value rest) { rest_ = std::move(rest); }

private:
    std::size_t index(int row, int column) const noexcept
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(stored_columns_) +
               static_cast<std::size_t>(column);
    }

    int rows_, columns_, stored_rows_, stored_columns_;
    std::vector<Value> values_;
    Value rest_;
};

using ArrayPointer = std::shared_ptr<const Array>;

/// What a part of a formula comes to.
using Operand = std::variant<Value, Areas, ArrayPointer>;

} // namespace tarvik::calculation
