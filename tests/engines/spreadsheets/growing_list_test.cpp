#include "tests/engines/spreadsheets/workbook_file.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace tarvik::test {

TEST(GrowingList, cells_hold_what_was_written_last_in_whatever_order)
{
    for (unsigned seed = 0; seed < 15; ++seed) {
        auto parts =
            simple_parts("<row r=\"3\"><c r=\"B3\" t=\"inlineStr\"><is><t>客户</t></is></c></row><row r=\"20\"/>");
        // Without a table of texts the rows hold them, and long ones are more than is kept together.
        if (seed % 3 == 0)
            edit_part(parts, "xl/_rels/workbook.xml.rels", "relationships/sharedStrings", "relationships/other");
        WorkbookFile file(parts);
        auto* workbook = &file.open();
        std::map<std::pair<int, int>, Text> held{{{3, 2}, U"客户"}};
        std::mt19937 random(seed);
        const auto number = [&](int first, int last) { return std::uniform_int_distribution(first, last)(random); };
        for (int step = 0, last_row = 3; step < 300; ++step) {
            const int row = number(0, 3) > 0 ? last_row + number(0, 1) : number(4, 60), column = number(1, 4);
            auto& sheet = workbook->worksheet(1);
            const auto text = number(0, 5) == 0 ? Text()
                                                : U" _x00" + number_text(number(1, 40)) + U"_\n<𠮷> &" +
                                                      Text(seed % 2 * 2'000, U'长');
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
