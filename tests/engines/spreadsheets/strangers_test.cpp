#include "tests/engines/spreadsheets/workbook_file.h"

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

const std::string sheet1 = "xl/worksheets/sheet1.xml";
const std::string book = "xl/workbook.xml";
const std::string links = "xl/_rels/workbook.xml.rels";
const std::string types = "[Content_Types].xml";

std::string link(const std::string& id, const std::string& kind, const std::string& target)
{
    return "<Relationship Id=\"" + id + "\" Type=\"http://x/" + kind + "\" Target=\"" + target + "\"/>";
}

} // namespace

// Workbooks as other programs write them.

TEST(Stranger, sheets_without_a_part_are_passed_over)
{
    auto parts = simple_parts("<row r=\"1\"><c r=\"A1\"><v>7</v></c></row>");
    edit_part(parts, book, "<sheets>", "<sheets><sheet name=\"Module1\" sheetId=\"9\" r:id=\"\"/>");
    WorkbookFile file(parts);
    auto& workbook = file.open();
    EXPECT_EQ(workbook.worksheet_count(), 2);
    EXPECT_EQ(workbook.worksheet(1).cell(1, 1), U"7");
}

TEST(Stranger, what_a_pivot_table_fills_cannot_be_written)
{
    auto parts = simple_parts("<row r=\"5\"><c r=\"B5\"><v>1</v></c></row>");
    set_part(parts, "xl/worksheets/_rels/sheet1.xml.rels",
             "<Relationships>" + link("r", "pivotTable", "../pivotTables/p.xml") + "</Relationships>");
    set_part(parts, "xl/pivotTables/p.xml",
             "<pivotTableDefinition><location ref=\"B5:D9\" rowPageCount=\"2\" colPageCount=\"1\"/><pageFields/>"
             "</pivotTableDefinition>");
    WorkbookFile file(parts);
    auto& sheet = file.open().worksheet(1);
    for (const auto& [row, column] : {std::pair(5, 2), {9, 4}, {2, 2}, {3, 3}}) {
        EXPECT_THROW(sheet.set_cell(row, column, 1.0), Failure) << row << ' ' << column;
    }
    for (const auto& [row, column] : {std::pair(5, 1), {10, 4}, {4, 2}, {1, 2}, {3, 4}}) {
        EXPECT_NO_THROW(sheet.set_cell(row, column, 1.0)) << row << ' ' << column;
    }
    sheet.set_cell(6, 2, Text());
    EXPECT_EQ(failure_of([&] { sheet.clear(1, 20, 1, 9); }),
              "无法处理工作簿“t.xlsx”：单元格 B5 属于数据透视表，不能改写。");
    EXPECT_EQ(sheet.clear(1, 4, 1, 9), 3);
}

TEST(Stranger, a_workbook_with_macro_sheets_cannot_become_a_plain_one)
{
    auto parts = rich_parts();
    edit_part(parts, book, "<sheets>", "<sheets><sheet name=\"宏\" sheetId=\"9\" r:id=\"rId9\"/>");
    edit_part(parts, links, "</Relationships>",
              link("rId9", "xlMacrosheet", "macrosheets/sheet1.xml") + "</Relationships>");
    set_part(parts, "xl/macrosheets/sheet1.xml", "<macrosheet/>");
    WorkbookFile file(parts, "t.xlsm");
    auto& workbook = file.open(U"t.xlsm");
    EXPECT_EQ(failure_of([&] { workbook.save_as(U"b.xlsx"); }),
              "无法处理工作簿“t.xlsm”：工作簿里有宏表，只能另存为 .xlsm 格式。");
    workbook.save_as(U"b.xlsm");
    EXPECT_EQ(parts_of(file.saved("b.xlsm")), parts);
}

TEST(Stranger, only_a_calculation_chain_goes_for_one)
{
    for (const std::string target : {"workbook.xml", "styles.xml", "worksheets/sheet1.xml", "nothing.xml"}) {
        auto parts = simple_parts("");
        edit_part(parts, links, "</Relationships>", link("rId9", "calcChain", target) + "</Relationships>");
        WorkbookFile file(parts);
        file.sheet_after(1, 1, 5.0);
        EXPECT_EQ(parts_of(file.saved()).size(), parts.size()) << target;
        EXPECT_EQ(file.open().worksheet(1).cell(1, 1), U"5");
    }
}

} // namespace tarvik::test
