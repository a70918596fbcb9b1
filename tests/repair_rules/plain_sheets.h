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

/// Cells by row and column, an empty cell reading as the empty text.
struct Cells {
    Grid& grid;

    Text operator()(int row, int column) const
    {
        const auto found = grid.find({row, column});
        return found == grid.end() ? Text() : text_of(found->second);
    }
    bool empty(int row, int column) const { return !grid.contains({row, column}); }
    void set(int row, int column, const CellValue& value)
    {
        if (text_of(value).empty()) grid.erase({row, column});
        else grid[{row, column}] = value;
    }
    double number(int row, int column) const { return tarvik::number((*this)(row, column)).value_or(0); }
    bool holds(int row, int column, std::u32string_view text) const
    {
        return (*this)(row, column).find(text) != Text::npos;
    }
    int last_line() const
    {
        int last = 1;
        for (int row = 1; row <= 1000; ++row)
            if (!empty(row, 1)) last = row;
        return last;
    }
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

inline void charge(Cells& cells, int row, const PlainRecord& record, const Charges& charges)
{
    if (charges.of_record) cells.set(row, 9, record[16]);
    cells.set(row, 10, charges.first);
    cells.set(row, 11, charges.second);
}

inline void plain_record(Cells& cells, int row, const PlainRecord& record, const RuleTable& rules)
{
    const bool first = cells.empty(row, 5) && cells.empty(row, 6);
    cells.set(row, 5, cells(row, 5) + U"|" + record[13]);
    cells.set(row, 6, cells(row, 6) + U"|" + record[14]);
    for (const Rule& rule : fired(first ? rules.first_entry : rules.update, cells(row, 2), record[14])) {
        if (rule.charges) charge(cells, row, record, *rule.charges);
        if (rule.code.empty()) continue;
        cells.set(row, 7, first ? rule.code : cells(row, 7) + U"|" + rule.code);
        cells.set(row, 8, (first ? 0 : cells.number(row, 8)) + rule.quantity);
    }
    if (first) cells.set(row, 7, U"|" + cells(row, 7));
}

inline void plain_line_rules(Cells& cells, int row, const std::vector<LineRule>& rules)
{
    for (const LineRule& rule : rules) {
        bool held = false;
        for (const Text& text : rule.any_of) held = held || cells.holds(row, rule.column, text);
        if (!held) continue;
        for (const auto& [column, value] : rule.settings) cells.set(row, column, value);
    }
}

inline void plain_total(Cells& cells, int row)
{
    const double charges = cells.number(row, 9) + cells.number(row, 10) + cells.number(row, 11);
    if (!(charges > 0)) return;
    if (cells.number(row, 8) == 0) cells.set(row, 8, 0.0);
    double total = charges * 1.404;
    cells.set(row, 12, wct(total));
}

/// Both give whether a line has met a record. enter_prices holds as long as no line leaves the first 2 x L rows.
inline bool plain_order(Grid& sheet, const std::vector<PlainRecord>& records, const RuleTable& rules)
{
    Cells cells{sheet};
    bool found = false;
    const int last = cells.last_line();
    for (int row = 12; row <= last; ++row) {
        for (const PlainRecord& record : records) {
            if (!same_number(cells(row, 1), record[4])) continue;
            found = true;
            if (!record[13].empty() && !record[14].empty()) plain_record(cells, row, record, rules);
        }
        plain_line_rules(cells, row, rules.line_rules);
        plain_total(cells, row);
    }
    return found;
}

inline bool plain_prices(Grid& sheet, const std::vector<PlainRecord>& records)
{
    Cells cells{sheet};
    bool found = false;
    const int last = cells.last_line();
    int width = 1;
    for (int column = 1; column <= 25; ++column)
        if (!cells.empty(12, column)) width = column;
    for (int row = 12; row <= 2 * last; ++row) {
        for (const PlainRecord& record : records) {
            if (!same_number(cells(row, 1), record[2])) continue;
            found = true;
            if (record[6].empty() || record[7].empty()) continue;
            if (cells.empty(row, 5) && cells.empty(row, 6)) {
                for (int column = 5; column <= 12; ++column)
                    cells.set(row, column, record[static_cast<std::size_t>(column) + 1]);
                continue;
            }
            for (int from = 2 * last; from > row; --from)
                for (int column = 1; column <= width; ++column) {
                    if (cells.empty(from, column)) continue;
                    cells.set(from + 1, column, sheet[{from, column}]);
                    cells.set(from, column, Text());
                }
            cells.set(row + 1, 5, record[6]);
            cells.set(row + 1, 6, record[7]);
        }
    }
    return found;
}

/// The sheet with only its cells: what the program works on in place of a workbook.
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

private:
    Grid cells_;
};

} // namespace tarvik::test
