#include "repair_rules/sheets.h"

#include "tests/repair_rules/plain_sheets.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik::repair_rules {
namespace {

using test::Grid;
using test::GridSheet;
using test::PlainRecord;

/// Model texts, repair texts, sheets and reports put together from the pieces of the rules themselves.
class RandomLines {
public:
    RandomLines(unsigned seed, const RuleTable& rules) : chance_(seed)
    {
        for (const Chain* chain : {&rules.update, &rules.first_entry}) {
            for (const Condition& group : chain->groups)
                for (int weight = 0; weight < 12; ++weight) add(models_, group.all_of);
            for (const Rule& rule : chain->rules) {
                add(models_, rule.model.all_of);
                words_.push_back(rule.repair_word.empty() ? U"已清洁" : rule.repair_word);
            }
        }
        for (const LineRule& rule : rules.line_rules) add(rule.column == 2 ? models_ : words_, rule.any_of);
    }

    /// From 0 to below `limit`.
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(chance_); }
    bool one_in(int many) { return below(many) == 0; }
    Text repairs() { return joined(words_, 3); }

    /// `lines` lines from row 12 on, some of them with something in their columns 5 to `width`.
    Grid sheet(int lines, int width)
    {
        Grid sheet{{{3, 1}, 5.0}};
        for (int line = 0; line < lines; ++line) {
            const int row = 12 + line;
            if (!one_in(12)) sheet[{row, 1}] = repair_number(line);
            sheet[{row, 2}] = joined(models_, 4);
            sheet[{row, 3}] = U"说明" + number_text(line);
            if (!one_in(4)) continue;
            for (int column = 5; column <= width; ++column) {
                if (!one_in(3)) continue;
                const bool is_text = column < 8 || column > 12;
                sheet[{row, column}] = is_text ? CellValue(repairs()) : static_cast<double>(below(90));
            }
        }
        if (width > 12) sheet[{12, width}] = U"备注";
        return sheet;
    }

    /// Records of repair numbers that the sheet has or might have, in the fields that both commands read.
    std::vector<PlainRecord> records(int count, int lines)
    {
        std::vector<PlainRecord> records;
        for (int number = 0; number < count; ++number) {
            PlainRecord& record = records.emplace_back(17, Text());
            for (Text& field : record)
                if (!one_in(8)) field = lower(repairs());
            record[2] = record[4] = number_text(below(lines + 5));
            if (one_in(5)) record[2] = record[4] = U"0" + record[2] + U".";
            if (!one_in(6)) record[14] = repairs();
            record[16] = one_in(5) ? Text() : number_text(below(20000) / 100.0);
        }
        return records;
    }

private:
    static void add(std::vector<Text>& pieces, const std::vector<Text>& more)
    {
        pieces.insert(pieces.end(), more.begin(), more.end());
    }
    Text joined(const std::vector<Text>& pieces, int most)
    {
        Text text;
        for (int count = below(most) + 1; count > 0; --count)
            text += pieces[static_cast<std::size_t>(below(static_cast<int>(pieces.size())))];
        return text;
    }
    /// Some as numbers, some with zeros ahead, some no number at all.
    CellValue repair_number(int line)
    {
        switch (below(6)) {
        case 0: return U"00" + number_text(line);
        case 1: return U"RMA" + number_text(line);
        case 2: return U" " + number_text(line) + U".0 ";
        default: return static_cast<double>(line);
        }
    }

    std::mt19937 chance_;
    std::vector<Text> models_, words_;
};

Table table_of(const std::vector<PlainRecord>& records)
{
    Table table;
    for (std::size_t row = 0; row < records.size(); ++row)
        for (std::size_t column = 1; column < records[row].size(); ++column)
            table.set_cell(row, column, records[row][column]);
    return table;
}

const RuleTable& rules()
{
    static const RuleTable table = read_rules(built_in_rules());
    return table;
}

/// A command's work on a sheet, and the plain way to do it.
struct Work {
    std::function<bool(Worksheet&, const Records&)> enter;
    std::size_t number_field;
    std::function<bool(GridSheet&, const std::vector<PlainRecord>&)> plain;
};
const Work order{[](auto& sheet, const auto& records) { return enter_orders(sheet, records, rules()); },
                 order_number_field,
                 [](GridSheet& sheet, const auto& records) { return test::plain_order(sheet, records, rules()); }};
const Work prices{enter_prices, price_number_field, test::plain_prices};

bool enter(const Work& work, Worksheet& sheet, const std::vector<PlainRecord>& records)
{
    const Table table = table_of(records);
    return work.enter(sheet, Records(table, records.size(), work.number_field));
}

std::string shown(const Grid& grid)
{
    Text text;
    for (const auto& [place, value] : grid) {
        const double* held = std::get_if<double>(&value);
        text += number_text(place.first) + U"," + number_text(place.second) + (held ? U"=" : U":") +
                (held ? number_text(*held) : std::get<Text>(value)) + U"\n";
    }
    return to_utf8(text);
}

PlainRecord price(TextView number, TextView first, TextView second = U"x")
{
    PlainRecord record(17, Text());
    record[2] = number.str();
    record[6] = first.str();
    record[7] = second.str();
    return record;
}

Grid prices_in(const Grid& before, const std::vector<PlainRecord>& records)
{
    GridSheet sheet(before);
    EXPECT_TRUE(enter(prices, sheet, records));
    return sheet.cells();
}

// As binary numbers 490031829581240320 and …321 are one.
TEST(Sheets, a_number_meets_the_records_of_its_value_to_the_last_digit)
{
    const Text near = U"490031829581240320", number = U"490031829581240321";
    const Table table =
        table_of({price(near, U"a"), price(U" 00" + number + U".0", U"b"), price(U"-7", U"c"), price(U"0.7e1", U"d")});
    const Records records(table, 4, price_number_field);
    const auto met = [&](const CellValue& cell) {
        const auto rows = records.with_number(cell);
        return std::vector(rows.begin(), rows.end());
    };
    using Rows = std::vector<std::size_t>;
    EXPECT_EQ(met(number), Rows{1});
    EXPECT_EQ(met(near), Rows{0});
    EXPECT_EQ(met(U"4.90031829581240321E17"), Rows{1});
    EXPECT_EQ(met(490031829581240320.0), Rows{}) << "the cell may have lost its last digits";
    EXPECT_EQ(met(7.0), Rows{3});
    EXPECT_EQ(met(U"+07"), Rows{3});
    EXPECT_EQ(met(-7.0), Rows{2});
    for (const auto* none : {U"7x", U"", U"0", U"70", U"-0.0"}) EXPECT_EQ(met(none), Rows{});
}

TEST(Sheets, random_sheets_become_what_the_plain_loops_make_of_them)
{
    for (unsigned seed = 0; seed < 400; ++seed) {
        RandomLines random(seed, rules());
        const int lines = 13 + random.below(20);
        const int width = 4 + random.below(24); // columns behind the 25th do not move
        const Grid before = random.sheet(lines, width);
        const auto records = random.records(random.below(lines), lines);
        for (const Work& work : {order, prices}) {
            GridSheet sheet(before), plain(before);
            ASSERT_EQ(enter(work, sheet, records), work.plain(plain, records)) << seed;
            ASSERT_EQ(shown(sheet.cells()), shown(plain.cells())) << seed;
        }
    }
}

TEST(Sheets, a_date_meets_no_record)
{
    struct DatedSheet final : GridSheet {
        using GridSheet::GridSheet;
        bool is_date(int row, int /*column*/) const override { return row == 12; }
    } sheet({{{12, 1}, 45352.0}, {{13, 1}, 45352.0}});
    EXPECT_TRUE(enter(prices, sheet, {price(U"45352", U"p")}));
    EXPECT_EQ(shown(sheet.cells()), "12,1=45352\n13,1=45352\n13,5:p\n13,6:x\n");
}

TEST(Sheets, lines_below_row_1000_do_not_count)
{
    Grid before{{{12, 1}, 1.0}, {{1000, 1}, 2.0}, {{1000, 2}, U"监控"}, {{1001, 1}, 3.0}, {{1001, 2}, U"监控"}};
    GridSheet orders(before);
    EXPECT_FALSE(enter(order, orders, {}));
    EXPECT_FALSE(orders.is_empty(1000, 12));
    EXPECT_TRUE(orders.is_empty(1001, 12));
    GridSheet last(before);
    EXPECT_FALSE(enter(prices, last, {price(U"3", U"p")}));
    EXPECT_TRUE(enter(prices, last, {price(U"2", U"p")}));
    EXPECT_EQ(to_utf8(last.cell(1000, 5)), "p");
}

TEST(Sheets, the_latest_of_several_records_stands_first_and_nothing_is_lost_beyond_the_room)
{
    // Two lines, so the room ends with row 26; below it a closing remark, an empty row, another remark.
    Grid before{{{12, 1}, 1.0},     {{12, 13}, U"备注"}, {{13, 1}, 2.0},
                {{13, 2}, U"乙机"}, {{27, 2}, U"经手"},  {{29, 2}, U"复核"}};
    std::vector<PlainRecord> records{price(U"2", U"z")};
    for (int number = 0; number < 20; ++number) records.push_back(price(U"1", U"a" + number_text(number)));
    Grid expected{{{12, 1}, 1.0}, {{12, 13}, U"备注"}, {{12, 5}, U"a0"}, {{12, 6}, U"x"}};
    for (int number = 1; number < 20; ++number) {
        expected[{12 + 20 - number, 5}] = U"a" + number_text(number);
        expected[{12 + 20 - number, 6}] = U"x";
    }
    expected[{32, 1}] = 2.0;
    expected[{32, 2}] = U"乙机";
    expected[{32, 5}] = U"z";
    expected[{32, 6}] = U"x";
    // What stood below the room keeps its order, its empty rows being filled.
    expected[{33, 2}] = U"经手";
    expected[{34, 2}] = U"复核";
    EXPECT_EQ(shown(prices_in(before, records)), shown(expected));
}

} // namespace
} // namespace tarvik::repair_rules
