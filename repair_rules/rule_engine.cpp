#include "repair_rules/rule_engine.h"

#include "calendar/numbers.h"

#include <algorithm>

namespace tarvik::repair_rules {

namespace {

constexpr std::u32string_view entry_mark = U"|";
constexpr double total_factor = 1.404;

void append_entry(SheetLine& line, int column, TextView text)
{
    line.append(column, entry_mark);
    line.append(column, text);
}

void set_charges(SheetLine& line, const Charges& charges, const RepairRecord& record)
{
    if (charges.of_record) line.set(record_charge_column, record.charge.str());
    line.set(first_charge_column, charges.first);
    line.set(second_charge_column, charges.second);
}

void update(SheetLine& line, const RepairRecord& record, const Chain& chain)
{
    append_entry(line, faults_column, record.fault);
    append_entry(line, repairs_column, record.repair);
    run_chain(chain, line.model(), record.repair, [&](const Rule& rule) {
        append_entry(line, codes_column, rule.code);
        // What somebody wrote in place of a number is left to stand.
        if (const auto quantity = line.number(quantity_column)) line.set(quantity_column, *quantity + rule.quantity);
        if (rule.charges) set_charges(line, *rule.charges, record);
    });
}

void enter_first(SheetLine& line, const RepairRecord& record, const Chain& chain)
{
    append_entry(line, faults_column, record.fault);
    append_entry(line, repairs_column, record.repair);
    run_chain(chain, line.model(), line.text(repairs_column), [&](const Rule& rule) {
        if (!rule.code.empty()) {
            line.set(codes_column, rule.code);
            line.set(quantity_column, rule.quantity);
        }
        if (rule.charges) set_charges(line, *rule.charges, record);
    });
    line.set(codes_column, Text(entry_mark) + line.text(codes_column));
}

void run_line_rules(SheetLine& line, const std::vector<LineRule>& rules)
{
    for (const LineRule& rule : rules) {
        const Text text = line.text(rule.column);
        const auto held = [&](const Text& wanted) { return TextView(text).contains(wanted); };
        if (std::ranges::none_of(rule.any_of, held)) continue;
        for (const Setting& setting : rule.settings) line.set(setting.column, setting.value);
    }
}

void set_total(SheetLine& line)
{
    double charges = 0;
    for (const int column : {record_charge_column, first_charge_column, second_charge_column}) {
        const auto charge = line.number(column);
        if (!charge) return;
        charges += *charge;
    }
    if (!(charges > 0)) return;
    if (line.number(quantity_column) == 0) line.set(quantity_column, 0.0);
    double total = charges * total_factor;
    line.set(total_column, wct(total));
}

} // namespace

void enter_record(SheetLine& line, const RepairRecord& record, const RuleTable& rules)
{
    if (line.is_filled(faults_column) || line.is_filled(repairs_column)) update(line, record, rules.update);
    else enter_first(line, record, rules.first_entry);
}

void finish_line(SheetLine& line, const RuleTable& rules)
{
    run_line_rules(line, rules.line_rules);
    set_total(line);
}

} // namespace tarvik::repair_rules
