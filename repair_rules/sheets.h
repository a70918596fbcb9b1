#pragma once

#include "engines/automation.h"
#include "mainwindow/table.h"
#include "repair_rules/rules.h"

#include <span>
#include <unordered_map>
#include <vector>

/// Brings the records into a sheet of the department: one device a line from row 12 on, its repair number in column 1
/// and its model in column 2. The lines end with the last filled cell of column 1 in the first 1000 rows. Each function
/// gives whether a line has met a record, an incomplete one included.
namespace tarvik::repair_rules {

/// The columns of a sheet of the department.
enum Column : int {
    number_column = 1, ///< repair number
    model_column = 2,
    faults_column = 5,
    repairs_column = 6,
    codes_column = 7,
    quantity_column = 8,
    record_charge_column = 9,
    first_charge_column = 10,
    second_charge_column = 11,
    total_column = 12,
};

inline constexpr int first_line = 12;
inline constexpr int last_row_looked_at = 1000;

/// The column of the repair number in the report that `An order` reads.
inline constexpr std::size_t order_number_field = 4;
/// The same in the report that `An prices` reads.
inline constexpr std::size_t price_number_field = 2;

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

/// The row of the last line; 1 if there is none.
int last_line(const Worksheet& sheet);
/// The records with the repair number of that line, in order; a date is none.
std::span<const std::size_t> records_of_line(const Worksheet& sheet, int row, const Records& records);

/// A record's fault and repair texts in columns 5 and 6, part codes in 7, their quantity in 8, charges in 9 to 11 and
/// their total in 12, as the rules say. A line without a record gets the line rules and its total.
bool enter_orders(Worksheet& sheet, const Records& records, const RuleTable& rules);

/// Eight values of a line's first record, copied. Each further record gets a line of its own below, with two of them:
/// the latest stands first. What stands below moves down, columns 1 to the last filled one of row 12; a row that the
/// lines would run over on their way down moves on as well, so none is lost.
bool enter_prices(Worksheet& sheet, const Records& records);

} // namespace tarvik::repair_rules
