#include "repair_rules/rule_engine.h"
#include "repair_rules/sheets.h"

namespace tarvik::repair_rules {

namespace {

constexpr std::size_t fault_field = 13, repair_field = 14, charge_field = 16;

} // namespace

int last_line(const Worksheet& sheet)
{
    int row = last_row_looked_at;
    while (row > 1 && sheet.is_empty(row, number_column)) --row;
    return row;
}

bool enter_orders(Worksheet& sheet, const Records& records, const RuleTable& rules)
{
    bool found = false;
    std::vector<SheetLine> lines; // written when all are read: an engine that works in blocks reads and writes once
    const int last = last_line(sheet);
    for (int row = first_line; row <= last; ++row) {
        SheetLine& line = lines.emplace_back(sheet, row);
        for (const std::size_t record : records.with_number(sheet.value(row, number_column))) {
            found = true;
            const auto fault = records.field(record, fault_field);
            const auto repair = records.field(record, repair_field);
            if (!fault.empty() && !repair.empty())
                enter_record(line, {fault, repair, records.field(record, charge_field)}, rules);
        }
        finish_line(line, rules);
    }
    for (int row = first_line; row <= last; ++row) lines[static_cast<std::size_t>(row - first_line)].write(sheet, row);
    return found;
}

} // namespace tarvik::repair_rules
