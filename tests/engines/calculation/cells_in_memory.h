#pragma once

#include "engines/spreadsheets/calculation/formula.h"

#include <map>
#include <set>
#include <vector>

namespace tarvik::test {

using calculation::CellAddress;
using calculation::Place;
using calculation::Range;
using calculation::Value;

/// A workbook of values and formulas that a test lays down.
class CellsInMemory : public calculation::CellSource, public calculation::Names {
public:
    explicit CellsInMemory(std::vector<Text> sheets = {U"Sheet1"}) : sheets_(std::move(sheets)), cells_(sheets_.size())
    {
    }

    void set(std::string_view place, Value value, int sheet = 1);
    /// Without "=".
    void set_formula(std::string_view place, std::string_view formula, int sheet = 1);
    /// A workbook's name, in lower case.
    void set_name(const Text& name, std::string_view formula) { names_[name] = calculation::parse(formula, {1, 1}); }

    /// The result at the cell, and of all that it depends on. A cycle is #REF!'s.
    Value result(const CellAddress& wanted);
    Value calculate(std::string_view formula, std::string_view at = "H20", bool is_array = false);

    Value value(const CellAddress& cell) const override;
    void visit(int sheet, const Range& area, const Visitor& visitor) const override;
    Place extent(int sheet) const override;
    std::uint64_t revision() const override { return revision_; }
    const calculation::Names& names() const override { return *this; }
    std::optional<int> find_sheet(TextView name) const override;
    std::shared_ptr<const calculation::Formula> find_name(TextView name, int sheet) const override;
    const calculation::Table* find_table(TextView name) const override;
    const calculation::Table* find_table_at(const CellAddress& cell) const override;
    bool is_row_hidden(int, int row) const override { return hidden_rows.contains(row); }
    bool is_row_filtered(int, int row) const override { return filtered_rows.contains(row); }
    std::shared_ptr<const calculation::Formula> formula(const CellAddress& cell) const override;
    bool counts_from_1904() const override { return is_from_1904; }
    CalendarTime now() const override { return {2026, 11, 25, 18, 30, 0}; }

    bool is_from_1904 = false;
    std::set<int> hidden_rows, filtered_rows;
    std::map<Text, calculation::Table> tables; ///< by names in lower case

private:
    struct Cell {
        Value value;
        calculation::FormulaPointer formula;
        bool is_calculated = true;
    };
    using Cells = std::map<Place, Cell>;

    Cells& cells(int sheet) { return cells_.at(static_cast<std::size_t>(sheet) - 1); }
    const Cells& cells(int sheet) const { return cells_.at(static_cast<std::size_t>(sheet) - 1); }

    std::vector<Text> sheets_;
    std::vector<Cells> cells_;
    std::map<Text, calculation::FormulaPointer> names_;
    std::uint64_t revision_ = 0;
    calculation::Calculator calculator_{*this};
};

} // namespace tarvik::test
