#pragma once

#include "calendar/calendar.h"
#include "repair_rules/rules.h"

#include <map>

/// What `An order` and `An prices` do to a sheet, written out step by step: each line compared with each record, each
/// cell read and written where it stands. The tests hold the program against it.
namespace tarvik::test {

/// The filled cells of a sheet by row and column.
using Grid = std::map<std::pair<int, int>, CellValue>;
/// The fields of a record, from 1 on.
using PlainRecord = std::vector<Text>;

using namespace repair_rules;

inline Text text_of(const CellValue& value)
{
    const double* held = std::get_if<double>(&value);
    return held ? number_text(*held) : std::get<Text>(value);
}

/// A sheet with only its cells: what the program works on in place of a workbook, and the plain loops too.
class GridSheet : public Worksheet {
public:
    explicit GridSheet(Grid cells) : cells_(std::move(cells)) {}
    const Grid& cells() const { return cells_; }

    Text cell(int row, int column) const override { return text_of(value(row, column)); }
    CellValue value(int row, int column) const override
    {
        const auto found = cells_.find({row, column});
        return found == cells_.end() ? CellValue() : found->second;
    }
    bool is_empty(int row, int column) const override { return !cells_.contains({row, column}); }
    void set_cell(int row, int column, const CellValue& value) override
    {
        if (text_of(value).empty()) cells_.erase({row, column});
        else cells_[{row, column}] = value;
    }
    int clear(int, int, int, int) override { return 0; }
    void print_out() override {}

    double number(int row, int column) const { return tarvik::number(cell(row, column)).value_or(0); }
    int last_line() const
    {
        int last = 1;
        for (int row = 1; row <= 1000; ++row)
            if (!is_empty(row, 1)) last = row;
        return last;
    }

private:
    Grid cells_;
};

inline bool same_number(const Text& a, const Text& b)
{
    const auto k = number(b);
    const auto c = number(a);
    return k && *k != 0 && c && *c == *k;
}

inline bool all_in(const Text& text, const Condition& condition)
{
    for (const Text& wanted : condition.all_of)
        if (text.find(wanted) == Text::npos) return false;
    return condition.none_of.empty() || text.find(condition.none_of) == Text::npos;
}

/// The rules that fire, in order.
inline std::vector<Rule> fired(const Chain& chain, const Text& model, const Text& repairs)
{
    std::vector<Rule> rules;
    for (const Rule& rule : chain.rules)
        if (all_in(model, chain.groups[rule.group]) && all_in(model, rule.model) &&
            repairs.find(rule.repair_word) != Text::npos)
            rules.push_back(rule);
    return rules;
}

inline void charge(GridSheet& cells, int row, const PlainRecord& record, const Charges& charges)
{
    if (charges.of_record) cells.set_cell(row, 9, record[16]);
    cells.set_cell(row, 10, charges.first);
    cells.set_cell(row, 11, charges.second);
}

inline void plain_record(GridSheet& cells, int row, const PlainRecord& record, const RuleTable& rules)
{
    const bool first = cells.is_empty(row, 5) && cells.is_empty(row, 6);
    cells.set_cell(row, 5, cells.cell(row, 5) + U"|" + record[13]);
    cells.set_cell(row, 6, cells.cell(row, 6) + U"|" + record[14]);
    for (const Rule& rule : fired(first ? rules.first_entry : rules.update, cells.cell(row, 2), record[14])) {
        if (rule.charges) charge(cells, row, record, *rule.charges);
        if (rule.code.empty()) continue;
        cells.set_cell(row, 7, first ? rule.code : cells.cell(row, 7) + U"|" + rule.code);
        cells.set_cell(row, 8, (first ? 0 : cells.number(row, 8)) + rule.quantity);
    }
    if (first) cells.set_cell(row, 7, U"|" + cells.cell(row, 7));
}

inline void plain_line_rules(GridSheet& cells, int row, const std::vector<LineRule>& rules)
{
    for (const LineRule& rule : rules) {
        bool held = false;
        for (const Text& text : rule.any_of) held = held || cells.cell(row, rule.column).find(text) != Text::npos;
        if (!held) continue;
        for (const auto& [column, value] : rule.settings) cells.set_cell(row, column, value);
    }
}

inline void plain_total(GridSheet& cells, int row)
{
    const double charges = cells.number(row, 9) + cells.number(row, 10) + cells.number(row, 11);
    if (!(charges > 0)) return;
    if (cells.number(row, 8) == 0) cells.set_cell(row, 8, 0.0);
    double total = charges * 1.404;
    cells.set_cell(row, 12, wct(total));
}

/// Both give whether a line has met a record. enter_prices holds as long as no line leaves the first 2 x L rows.
inline bool plain_order(GridSheet& cells, const std::vector<PlainRecord>& records, const RuleTable& rules)
{
    bool found = false;
    const int last = cells.last_line();
    for (int row = 12; row <= last; ++row) {
        for (const PlainRecord& record : records) {
            if (!same_number(cells.cell(row, 1), record[4])) continue;
            found = true;
            if (!record[13].empty() && !record[14].empty()) plain_record(cells, row, record, rules);
        }
        plain_line_rules(cells, row, rules.line_rules);
        plain_total(cells, row);
    }
    return found;
}

inline bool plain_prices(GridSheet& cells, const std::vector<PlainRecord>& records)
{
    bool found = false;
    const int last = cells.last_line();
    int width = 1;
    for (int column = 1; column <= 25; ++column)
        if (!cells.is_empty(12, column)) width = column;
    for (int row = 12; row <= 2 * last; ++row) {
        for (const PlainRecord& record : records) {
            if (!same_number(cells.cell(row, 1), record[2])) continue;
            found = true;
            if (record[6].empty() || record[7].empty()) continue;
            if (cells.is_empty(row, 5) && cells.is_empty(row, 6)) {
                for (int column = 5; column <= 12; ++column)
                    cells.set_cell(row, column, record[static_cast<std::size_t>(column) + 1]);
                continue;
            }
            for (int from = 2 * last; from > row; --from)
                for (int column = 1; column <= width; ++column) {
                    if (cells.is_empty(from, column)) continue;
                    cells.set_cell(from + 1, column, cells.value(from, column));
                    cells.set_cell(from, column, Text());
                }
            cells.set_cell(row + 1, 5, record[6]);
            cells.set_cell(row + 1, 6, record[7]);
        }
    }
    return found;
}

} // namespace tarvik::test
