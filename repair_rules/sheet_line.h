#pragma once

#include "engines/automation.h"

#include <array>
#include <optional>

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

/// A cell that knows whether it was given something since it was read.
struct LineCell {
    CellValue value;
    bool filled = false; ///< also a formula without a result
    bool changed = false;
};

/// One line of a sheet while its records are entered: its model text and the columns 5 to 12. The work is done here and
/// written back once, so that a cell is written once however many records its line has.
class SheetLine {
public:
    SheetLine() = default;
    explicit SheetLine(Text model) : model_(std::move(model)) {}
    SheetLine(const Worksheet& sheet, int row);
    /// Writes the cells that changed.
    void write(Worksheet& sheet, int row) const;

    const Text& model() const { return model_; }
    bool is_filled(int column) const { return cell(column).filled; }
    /// The value as text. Column 2 gives the model.
    Text text(int column) const;
    /// 0 for an empty cell; nothing for a text that is no number.
    std::optional<double> number(int column) const;
    /// The empty text empties the cell.
    void set(int column, CellValue value);
    /// Puts the text behind what stands in the cell.
    void append(int column, TextView text);

private:
    static constexpr int first_column = faults_column, last_column = total_column;
    const LineCell& cell(int column) const { return cells_.at(static_cast<std::size_t>(column - first_column)); }
    LineCell& cell(int column) { return cells_.at(static_cast<std::size_t>(column - first_column)); }

    Text model_;
    std::array<LineCell, last_column - first_column + 1> cells_;
};

} // namespace tarvik::repair_rules
