#pragma once

#include "repair_rules/rules.h"

#include <map>

/// What `An order` and `An prices` do to a sheet, written out step by step: each line compared with each record, each
/// cell read and written where it stands. The tests hold the program against it.
namespace tarvik::test {

/// The filled cells of a sheet by row and column.
using Grid = std::map<std::pair<int, int>, CellValue>;
/// The fields of a record, from 1 on.
using PlainRecord = std::vector<Text>;

/// Both give whether a line has met a record. enter_prices holds as long as no line leaves the first 2 x L rows.
bool plain_order(Grid& sheet, const std::vector<PlainRecord>& records, const repair_rules::RuleTable& rules);
bool plain_prices(Grid& sheet, const std::vector<PlainRecord>& records);

/// The sheet with only its cells: what the program works on in place of a workbook.
class GridSheet final : public Worksheet {
public:
    explicit GridSheet(Grid cells) : cells_(std::move(cells)) {}
    const Grid& cells() const { return cells_; }

    Text cell(int row, int column) const override;
    CellValue value(int row, int column) const override;
    bool is_empty(int row, int column) const override { return !cells_.contains({row, column}); }
    void set_cell(int row, int column, const CellValue& value) override;
    int clear(int, int, int, int) override { return 0; }
    void print_out() override {}

private:
    Grid cells_;
};

} // namespace tarvik::test
