#include "engines/spreadsheets/sheet_look.h"
#include "engines/spreadsheets/workbook_model.h"
#include "tests/engines/spreadsheets/workbook_file.h"

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

using namespace ooxml;

std::shared_ptr<const Package> packed(const Parts& parts)
{
    return std::make_shared<const Package>(make_package(parts));
}

std::string changed_package(const std::string& part, const std::string& from, const std::string& to)
{
    auto parts = simple_parts("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    edit_part(parts, part, from, to);
    return make_package(parts);
}

} // namespace

TEST(BadFile, is_a_failure_that_tells_file_and_reason)
{
    const std::string sheet1 = "xl/worksheets/sheet1.xml";
    auto without_sheet = simple_parts("");
    std::erase_if(without_sheet, [](const auto& part) { return part.first == "xl/worksheets/sheet2.xml"; });
    auto wrong_sum = make_package(simple_parts("<row r=\"1\"/>"), false);
    wrong_sum.replace(wrong_sum.find("<row r=\"1\"/>"), 12, "<row r=\"2\"/>");
    auto twice = simple_parts("");
    set_part(twice, "XL/stylez.xml", "<styleSheet/>");
    auto twice_named = make_package(twice);
    for (auto at = twice_named.find("stylez"); at != std::string::npos; at = twice_named.find("stylez", at))
        twice_named.replace(at, 6, "styles");

    struct Case {
        std::string bytes;
        std::string reason;
    };
    const Case cases[] = {
        {make_package({{"a.txt", "b"}}), "缺少部件“[Content_Types].xml”。"},
        {make_package(without_sheet), "缺少工作表“第二张”的部件。"},
        {wrong_sum, "部件“xl/worksheets/sheet1.xml”已损坏。"},
        {changed_package("_rels/.rels", "officeDocument\"", "other\""), "文件不是工作簿。"},
        {changed_package("[Content_Types].xml", "openxmlformats-officedocument.spreadsheetml.sheet.main+xml",
                         "ms-excel.sheet.binary.macroEnabled.main"),
         "这是二进制格式（.xlsb）的工作簿，不能处理，请另存为 .xlsx。"},
        {changed_package(sheet1, "<sheetData>", "<row>" + repeated("<a>", 100'000)),
         "部件“xl/worksheets/sheet1.xml”已损坏。"},
        {changed_package(sheet1, "r=\"1\"", "r=\"1048577\""), "工作表里有无效的行号或单元格位置。"},
        {changed_package(sheet1, "<v>1</v></c>", "<v>1</v></c></row><row r=\"1\"><c/>"),
         "工作表里的行或单元格有重复，或次序不对。"},
        {changed_package(sheet1, "<v>1</v></c>", "<v>1</v></c><c t=\"s\"><v>3</v></c>"),
         "单元格 B1 引用的文本不存在。"},
        {twice_named, "压缩包里有两个同名的部件“XL/styles.xml”。"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(failure_of([&] { WorkbookFile(one.bytes).open().worksheet(1); }),
                  std::string("无法处理工作簿“t.xlsx”：").append(one.reason));

    WorkbookFile file(simple_parts(""));
    EXPECT_THROW(file.open(U"missing.xlsx"), Failure);
}

// Each of these would take minutes or hours if work grew with the square of what the file holds.
TEST(BadFile, no_file_makes_the_work_grow_faster_than_itself)
{
    std::string long_text(900'000, 'x');
    std::string quotes(900'000, '"');
    std::string formulas;
    std::string texts;
    std::string merged;
    for (int i = 1; i <= 8'000; ++i) {
        const auto row = std::to_string(i);
        texts += "<row r=\"" + row + "\"><c r=\"A" + row + "\" t=\"s\"><v>3</v></c></row>";
        merged += "<mergeCell ref=\"C" + row + ":C1048576\"/>";
        formulas += "<row r=\"" + std::to_string(10'000 + i) + "\"><c><f t=\"array\" ref=\"A" +
                    std::to_string(10'000 + i) + ":B" + std::to_string(10'000 + i) + "\">1</f></c><c/></row>";
    }
    auto parts = simple_parts(texts + formulas, "<mergeCells a='" + quotes + "'>" + merged + "</mergeCells>");
    edit_part(parts, "xl/sharedStrings.xml", "</sst>", "<si><t>" + long_text + "</t></si></sst>");
    WorkbookFile file(parts);
    auto& workbook = file.open();
    EXPECT_EQ(workbook.worksheet(1).clear(1, 20'000, 1, 5), 8'000 + 16'000);
    workbook.close(true);
    EXPECT_EQ(file.open().worksheet(1).clear(1, 20'000, 1, 5), 0);
}

// Little is written in these and much is meant: each would take minutes or gigabytes if what is led to many times were
// read each time.

TEST(HostileWorkbook, a_table_that_is_led_to_very_often_is_read_once)
{
    auto parts = simple_parts("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    set_part(parts, "xl/tables/t.xml", "<table ref=\"A1:B2\">" + repeated("<a/>", 100'000) + "</table>");
    std::string links;
    for (int i = 0; i < 50'000; ++i)
        links += "<Relationship Id=\"" + std::to_string(i) + "\" Type=\"a/table\" Target=\"/XL/tables/t.xml\"/>";
    set_part(parts, "xl/worksheets/_rels/sheet1.xml.rels", "<Relationships>" + links + "</Relationships>");
    WorkbookModel model(packed(parts));
    EXPECT_THROW(model.sheet(1).write({1, 1}, 2.0), Damage); // a header of that table
    EXPECT_TRUE(model.sheet(1).write({2, 1}, 2.0));
}

TEST(HostileWorkbook, a_long_formula_is_not_told_anew_for_each_of_its_cells)
{
    std::string rows = "<row r=\"1\"><c r=\"ALL1\"><f t=\"shared\" ref=\"A1:ALL1000\" si=\"0\">" +
                       std::string(1'000'000, '1') + "</f></c></row>";
    for (int row = 2; row < 900; ++row)
        rows += "<row><c r=\"" + place_name({row, 1000 - row}) + "\"><f t=\"shared\" si=\"0\"/></c></row>";
    WorkbookModel model(packed(simple_parts(rows)));
    EXPECT_THROW(model.sheet(1).write({1, 1000}, 1.0), Damage);
}

TEST(HostileWorkbook, an_array_formula_within_another_is_calculated_all_the_same)
{
    WorkbookModel model(
        packed(simple_parts("<row r=\"1\"><c r=\"A1\"><f t=\"array\" ref=\"A1:B1\">1</f><v>1</v></c></row>"
                            "<row r=\"2\"><c r=\"E2\"><f>D6</f></c></row>"
                            "<row r=\"3\"><c r=\"A3\"><f t=\"array\" ref=\"A3:C5\">1</f><v>1</v></c></row>"
                            "<row r=\"4\"><c r=\"B4\"><f t=\"array\" ref=\"B4:D6\">2</f></c></row>")));
    EXPECT_EQ(model.sheet(1).text({2, 5}), U"2");
}

TEST(HostileWorkbook, its_look_takes_no_more_than_its_cells)
{
    std::string merged;
    for (int row = 300; row < 50'000; row += 2)
        merged += "<mergeCell ref=\"" + range_name({{row, 1}, {row + 1, 1}}) + "\"/>";
    auto parts = simple_parts("<row r=\"1\"><c r=\"A1\" s=\"9\"/></row>", "<mergeCells>" + merged + "</mergeCells>");
    set_part(parts, "xl/styles.xml",
             "<styleSheet><fonts><font><name val=\"" + std::string(1'000'000, 'x') + "\"/>" + repeated("<u/>", 50'000) +
                 "<b/></font></fonts><cellXfs>" + repeated("<xf fontId=\"0\"/>", 50'000) + "</cellXfs></styleSheet>");
    WorkbookModel model(packed(parts));
    const auto look = sheet_look(model.sheet(1).part().root(), model.original(), 200, 60);
    ASSERT_EQ(look.cells.size(), 1U);
    EXPECT_TRUE(look.cells.front().look.bold);
    EXPECT_EQ(look.cells.front().look.font, CellLook().font);
}

} // namespace tarvik::test
