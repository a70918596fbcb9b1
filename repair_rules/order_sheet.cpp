#include "calendar/calendar.h"
#include "repair_rules/sheets.h"

#include <algorithm>
#include <array>

namespace tarvik::repair_rules {

namespace {

constexpr std::size_t fault_field = 13, repair_field = 14, charge_field = 16;
constexpr std::u32string_view entry_mark = U"|";
constexpr double total_factor = 1.404;

/// A cell that knows whether it was given something since it was read.
struct LineCell {
    CellValue value;
    bool changed = false;
};

/// One line of a sheet while its records are entered: its model text and the columns 5 to 12. The work is done here and
/// written back once, so that a cell is written once however many records its line has.
class SheetLine {
public:
    SheetLine(const Worksheet& sheet, int row) : model_(sheet.cell(row, model_column))
    {
        for (int column = first_column; column <= last_column; ++column)
            if (!sheet.is_empty(row, column)) cell(column) = {sheet.cell(row, column)};
    }
    /// Writes the cells that changed.
    void write(Worksheet& sheet, int row) const
    {
        for (int column = first_column; column <= last_column; ++column)
            if (cell(column).changed) sheet.set_cell(row, column, cell(column).value);
    }

    const Text& model() const { return model_; }
    /// The value as text. Column 2 gives the model.
    Text text(int column) const
    {
        if (column == model_column) return model_;
        const CellValue& value = cell(column).value;
        const double* number = std::get_if<double>(&value);
        return number ? number_text(*number) : std::get<Text>(value);
    }
    /// 0 for an empty cell; nothing for a text that is no number.
    std::optional<double> number(int column) const
    {
        const CellValue& value = cell(column).value;
        if (const double* number = std::get_if<double>(&value)) return *number;
        const Text& text = std::get<Text>(value);
        return text.empty() ? 0 : tarvik::number(text);
    }
    /// The empty text empties the cell.
    void set(int column, CellValue value) { cell(column) = {std::move(value), true}; }
    /// Puts the text behind what stands in the cell, and the mark of an entry between.
    void append(int column, TextView text) { cell(column) = {this->text(column) + entry_mark + text, true}; }

private:
    static constexpr int first_column = faults_column, last_column = total_column;
    const LineCell& cell(int column) const { return cells_.at(static_cast<std::size_t>(column - first_column)); }
    LineCell& cell(int column) { return cells_.at(static_cast<std::size_t>(column - first_column)); }

    Text model_;
    std::array<LineCell, last_column - first_column + 1> cells_;
};

/// What a record says. The texts are those of the open report, in lower case.
struct RepairRecord {
    TextView fault, repair, charge;
};

void set_charges(SheetLine& line, const Charges& charges, const RepairRecord& record)
{
    if (charges.of_record) line.set(record_charge_column, record.charge.str());
    line.set(first_charge_column, charges.first);
    line.set(second_charge_column, charges.second);
}

void update(SheetLine& line, const RepairRecord& record, const Chain& chain)
{
    run_chain(chain, line.model(), record.repair, [&](const Rule& rule) {
        line.append(codes_column, rule.code);
        // What somebody wrote in place of a number is left to stand.
        if (const auto quantity = line.number(quantity_column)) line.set(quantity_column, *quantity + rule.quantity);
        if (rule.charges) set_charges(line, *rule.charges, record);
    });
}

void enter_first(SheetLine& line, const RepairRecord& record, const Chain& chain)
{
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

/// A charge that is no number leaves the line without a total.
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

/// The first record of an empty line decides code and quantity by the last rule that fires; each further record adds to
/// what stands there.
void enter_record(SheetLine& line, const RepairRecord& record, const RuleTable& rules)
{
    const bool is_first = line.text(faults_column).empty() && line.text(repairs_column).empty();
    line.append(faults_column, record.fault);
    line.append(repairs_column, record.repair);
    if (is_first) enter_first(line, record, rules.first_entry);
    else update(line, record, rules.update);
}

} // namespace

bool enter_orders(Worksheet& sheet, const Records& records, const RuleTable& rules)
{
    bool found = false;
    std::vector<SheetLine> lines; // written when all are read: no write has a formula of another line calculated anew
    const int last = last_line(sheet);
    for (int row = first_line; row <= last; ++row) {
        SheetLine& line = lines.emplace_back(sheet, row);
        for (const std::size_t record : records_of_line(sheet, row, records)) {
            found = true;
            const auto fault = records.field(record, fault_field);
            const auto repair = records.field(record, repair_field);
            if (!fault.empty() && !repair.empty())
                enter_record(line, {fault, repair, records.field(record, charge_field)}, rules);
        }
        run_line_rules(line, rules.line_rules); // a line without records gets these and its total, too
        set_total(line);
    }
    for (int row = first_line; row <= last; ++row) lines[static_cast<std::size_t>(row - first_line)].write(sheet, row);
    return found;
}

} // namespace tarvik::repair_rules
