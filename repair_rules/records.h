#pragma once

#include "engines/automation.h"
#include "mainwindow/table.h"

#include <span>
#include <unordered_map>
#include <vector>

namespace tarvik::repair_rules {

/// The records of the open report, rows 0 to count - 1 of a table, by their repair number. Numbers are the same when
/// their values are, to the last digit: 00123 is 123.
class Records {
public:
    /// `table` must outlive this.
    Records(const Table& table, std::size_t count, std::size_t number_column);

    /// The rows of the records with the number of that cell, in order. A text that is no number has none, nor has 0,
    /// nor a cell whose number may have lost digits when it was typed.
    std::span<const std::size_t> with_number(const CellValue& cell) const;
    TextView field(std::size_t row, std::size_t column) const { return table_.cell(row, column); }

private:
    const Table& table_;
    std::unordered_map<Text, std::vector<std::size_t>> rows_;
};

} // namespace tarvik::repair_rules
