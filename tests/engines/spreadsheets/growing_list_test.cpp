#include "tests/engines/spreadsheets/workbook_file.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>

namespace tarvik::test {

TEST(GrowingList, is_the_same_whichever_of_its_rows_come_first)
{
    constexpr int first = 50, last = 1250;
    const auto fill = [](Worksheet& sheet, int row) {
        sheet.set_cell(row, 1, double{100} * row);
        for (int column = 2; column <= 9; ++column)
            sheet.set_cell(row, column, Text(column % 2 == 0 ? U"设备" : U" <&\"> "));
        sheet.set_cell(row, 10, row / 8.0);
    };
    const auto list = [&](const std::function<void(Worksheet&)>& write) {
        WorkbookFile file(simple_parts("<row r=\"2\"><c r=\"A2\"><f>1+1</f><v>2</v></c></row>"));
        auto& workbook = file.open();
        write(workbook.worksheet(1));
        workbook.close(true);
        return part_of(file.saved(), "xl/worksheets/sheet1.xml");
    };
    const auto every = [&](Worksheet& sheet, int from, int to, int step) {
        for (int row = from; step > 0 ? row <= to : row >= to; row += step) fill(sheet, row);
    };
    const auto downwards = list([&](Worksheet& sheet) { every(sheet, first, last, 1); });
    EXPECT_GT(downwards.size(), std::size_t{4} << 16U); // beyond what is kept together
    EXPECT_EQ(downwards, list([&](Worksheet& sheet) { every(sheet, last, first, -1); }));
    EXPECT_EQ(downwards, list([&](Worksheet& sheet) {
                  every(sheet, first, last, 2);
                  every(sheet, first + 1, last, 2);
              }));
    EXPECT_EQ(downwards, list([&](Worksheet& sheet) {
                  for (int row = first; row <= last; ++row) {
                      fill(sheet, row);
                      if (row % 7 == 0) sheet.set_cell(first + row % 50, 1, 1.0);
                      if (row % 300 == 0) {
                          EXPECT_EQ(sheet.cell(row - 1, 3), U" <&\"> ");
                      }
                  }
                  every(sheet, first, first + 49, 1);
              }));
}

TEST(GrowingList, cells_hold_what_was_written_last_in_whatever_order)
{
    for (unsigned seed = 0; seed < 15; ++seed) {
        WorkbookFile file(simple_parts("<row r=\"3\"><c r=\"B3\" t=\"s\"><v>0</v></c></row><row r=\"20\"/>"));
        auto* workbook = &file.open();
        std::map<std::pair<int, int>, Text> held{{{3, 2}, U"客户"}};
        std::mt19937 random(seed);
        const auto number = [&](int first, int last) { return std::uniform_int_distribution(first, last)(random); };
        for (int step = 0, last_row = 3; step < 300; ++step) {
            const int row = number(0, 3) > 0 ? last_row + number(0, 1) : number(4, 60), column = number(1, 4);
            auto& sheet = workbook->worksheet(1);
            const auto text = number(0, 5) == 0 ? Text() : U" _x00" + number_text(number(1, 40)) + U"_\n<𠮷> &";
            switch (number(0, 19)) {
            case 0:
                workbook->save_as(U"另存.xlsx");
                if (number(0, 1) == 0) workbook = &file.open(U"另存.xlsx");
                break;
            case 1:
                std::erase_if(held, [](const auto& cell) { return cell.second.empty(); });
                EXPECT_EQ(sheet.clear(row, row + 3, 1, 2),
                          static_cast<int>(std::erase_if(held, [row](const auto& cell) {
                              const auto [of_row, of_column] = cell.first;
                              return of_row >= row && of_row <= row + 3 && of_column <= 2;
                          })));
                break;
            case 2:
            case 3:
                EXPECT_EQ(sheet.cell(row, column), (held[{row, column}])) << seed << ' ' << step;
                EXPECT_EQ(sheet.is_empty(row, column), (held[{row, column}].empty())) << seed << ' ' << step;
                break;
            case 4:
                sheet.set_cell(row, column, row / 8.0);
                held[{row, column}] = number_text(row / 8.0);
                last_row = std::max(last_row, row);
                break;
            default:
                sheet.set_cell(row, column, text);
                held[{row, column}] = text;
                last_row = std::max(last_row, row);
            }
        }
        workbook->save_as(U"另存.xlsx");
        auto& saved = file.open(U"另存.xlsx").worksheet(1);
        for (const auto& [place, text] : held) EXPECT_EQ(saved.cell(place.first, place.second), text) << seed;
    }
}

} // namespace tarvik::test
