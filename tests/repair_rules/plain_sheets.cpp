#include "calendar/numbers.h"
#include "tests/repair_rules/plain_rules.h"

namespace tarvik::test {

namespace {

Text text_of(const CellValue& value)
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

bool same_number(const Text& a, const Text& b)
{
    const auto k = number(b);
    const auto c = number(a);
    return k && *k != 0 && c && *c == *k;
}

void charge(Cells& cells, int row, const PlainRecord& record, double first, double second)
{
    cells.set(row, 9, record[16]);
    cells.set(row, 10, first);
    cells.set(row, 11, second);
}

bool is_card_rule(const Cells& cells, int row, const PlainRecord& record)
{
    const auto repaired = [&](std::u32string_view word) { return record[14].find(word) != Text::npos; };
    return cells.holds(row, 2, U"百兆光口接口卡-FM-H1FE-S") && (repaired(U"换光模块") || repaired(U"换以太网转换芯片"));
}

void plain_update(Cells& cells, int row, const PlainRecord& record)
{
    cells.set(row, 5, cells(row, 5) + U"|" + record[13]);
    cells.set(row, 6, cells(row, 6) + U"|" + record[14]);
    for (const PlainHit& hit : plain_update_hits(cells(row, 2), record[14])) {
        cells.set(row, 7, cells(row, 7) + U"|" + hit.code);
        cells.set(row, 8, cells.number(row, 8) + hit.quantity);
    }
    if (is_card_rule(cells, row, record)) charge(cells, row, record, 45, 12);
}

void plain_first(Cells& cells, int row, const PlainRecord& record)
{
    cells.set(row, 5, U"|" + record[13]);
    cells.set(row, 6, U"|" + record[14]);
    for (const PlainHit& hit : plain_first_hits(cells(row, 2), cells(row, 6))) {
        cells.set(row, 7, hit.code);
        cells.set(row, 8, hit.quantity);
    }
    if (is_card_rule(cells, row, record)) charge(cells, row, record, 45, 12);
    if (cells.holds(row, 2, U"交换机")) {
        charge(cells, row, record, 45, 12);
        if (cells.holds(row, 2, U"电信级以太网交换机")) {
            charge(cells, row, record, 45, 15);
            if (cells.holds(row, 2, U"ME-PAF-AC")) {
                cells.set(row, 10, 50.0);
                cells.set(row, 11, 20.0);
            }
        }
    }
    if (cells.holds(row, 2, U"收发器")) charge(cells, row, record, 30, 7);
    if (cells.holds(row, 2, U"转换器")) charge(cells, row, record, 35, 10);
    cells.set(row, 7, U"|" + cells(row, 7));
}

void plain_line_rules(Cells& cells, int row)
{
    const auto fixed = [&](std::u32string_view model, double first, double second) {
        if (!cells.holds(row, 2, model)) return;
        cells.set(row, 10, first);
        cells.set(row, 11, second);
    };
    fixed(U"H1FE-S", 45, 12);
    fixed(U"监控", 50, 10);
    fixed(U"交换机-S3", 50, 30);
    fixed(U"S2228MF", 45, 15);
    fixed(U"FM-H1SF", 45, 12);
    fixed(U"FM-F03-8FE", 60, 50);
    if (cells.holds(row, 2, U"S2226A")) cells.set(row, 11, 15.0);
    if (cells.holds(row, 2, U"S2024S") || cells.holds(row, 2, U"S2016S")) cells.set(row, 11, 10.0);
    if (cells.holds(row, 6, U"报废") || cells.holds(row, 6, U"原样返还客户")) cells.set(row, 10, 0.0);
    if (cells.holds(row, 5, U"超出保修")) cells.set(row, 5, U"元器件老化");
}

void plain_total(Cells& cells, int row)
{
    const double charges = cells.number(row, 9) + cells.number(row, 10) + cells.number(row, 11);
    if (!(charges > 0)) return;
    if (cells.number(row, 8) == 0) cells.set(row, 8, 0.0);
    double total = charges * 1.404;
    cells.set(row, 12, wct(total));
}

} // namespace

bool plain_order(Grid& sheet, const std::vector<PlainRecord>& records)
{
    Cells cells{sheet};
    bool found = false;
    const int last = cells.last_line();
    for (int row = 12; row <= last; ++row) {
        for (const PlainRecord& record : records) {
            if (!same_number(cells(row, 1), record[4])) continue;
            found = true;
            if (record[13].empty() || record[14].empty()) continue;
            if (!cells.empty(row, 5) || !cells.empty(row, 6)) plain_update(cells, row, record);
            else plain_first(cells, row, record);
        }
        plain_line_rules(cells, row);
        plain_total(cells, row);
    }
    return found;
}

bool plain_prices(Grid& sheet, const std::vector<PlainRecord>& records)
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

Text GridSheet::cell(int row, int column) const
{
    return text_of(value(row, column));
}

CellValue GridSheet::value(int row, int column) const
{
    const auto found = cells_.find({row, column});
    return found == cells_.end() ? CellValue() : found->second;
}

void GridSheet::set_cell(int row, int column, const CellValue& value)
{
    if (text_of(value).empty()) cells_.erase({row, column});
    else cells_[{row, column}] = value;
}

} // namespace tarvik::test
