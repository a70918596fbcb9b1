#include "tests/engines/spreadsheets/workbook_file.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

namespace tarvik::test {

TEST(OtherReader, finds_what_was_written)
{
    WorkbookFile file(simple_parts(
        "<row r=\"2\" spans=\"2:3\"><c r=\"B2\" s=\"1\"><v>42</v></c><c r=\"C2\" t=\"s\"><v>1</v></c></row>"
        "<row r=\"4\"><c r=\"B4\"><f t=\"shared\" ref=\"B4:B5\" si=\"0\">B2+$C$1</f><v>1</v></c></row>"
        "<row r=\"5\"><c r=\"B5\"><f t=\"shared\" si=\"0\"/><v>1</v></c></row>",
        "<mergeCells count=\"1\"><mergeCell ref=\"D6:E7\"/></mergeCells>"));
    auto& workbook = file.open();
    auto& sheet = workbook.worksheet(1);
    sheet.set_cell(1, 1, Text(U"00123"));
    sheet.set_cell(1, 2, Text(U"=1+1"));
    sheet.set_cell(2, 2, -0.125);
    sheet.set_cell(3, 30, Text(U" 第一行\r\n<二> & \"𠮷\" "));
    sheet.set_cell(4, 2, Text(U"_x0041_"));
    sheet.set_cell(6, 2, 1e21);
    sheet.set_cell(7, 5, Text(U"客户"));
    sheet.set_cell(8, 1, Text(U"00123"));
    workbook.save_as(U"单据");
    EXPECT_EQ(read_by_python("tests/engines/spreadsheets/read_workbook.py", file.folder.path() / "单据.xlsx"),
              R"(["第一张", "A1", "s", "00123", "General"]
["第一张", "B1", "s", "=1+1", "@"]
["第一张", "B2", "n", -0.125, "0.00\"元\""]
["第一张", "C2", "s", "粗体 ", "General"]
["第一张", "AD3", "s", " 第一行\n<二> & \"𠮷\" ", "General"]
["第一张", "B4", "s", "_x0041_", "General"]
["第一张", "B5", "f", "=B3+$C$1", "General"]
["第一张", "B6", "n", 1e+21, "@"]
["第一张", "D6", "s", "客户", "General"]
["第一张", "A8", "s", "00123", "General"]
["第一张", "A1:AD8", ["D6:E7"]]
["第二张", "A1", "f", "=第一张!B2*2", "General"]
["第二张", "A1:A1", []]
)");
}

} // namespace tarvik::test
