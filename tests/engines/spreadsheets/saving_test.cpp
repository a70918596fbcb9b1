#include "tests/engines/spreadsheets/workbook_file.h"

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

const std::string sheet1 = "xl/worksheets/sheet1.xml";

} // namespace

TEST(Saving, the_extension_tells_the_format)
{
    const std::string types = "[Content_Types].xml";
    const auto link = [](const std::string& kind, const std::string& target) {
        return "<Relationship Id=\"" + kind + target + "\" Type=\"t/" + kind + "\" Target=\"" + target + "\"/>";
    };
    auto parts = rich_parts();
    set_part(parts, "xl/drawings/_rels/drawing1.xml.rels",
             "<Relationships>" + link("image", "../media/image1.png") + "</Relationships>");
    edit_part(parts, "_rels/.rels", "</Relationships>", link("extensibility", "vba.xml") + "</Relationships>");
    set_part(parts, "vba.xml", "<customUI/>"); // a ribbon that runs macros
    set_part(parts, "_rels/vba.xml.rels",
             "<Relationships>" + link("image", "vba.png") + link("image", "/xl/media/image1.png") +
                 link("image", "/xl/workbook.xml") + "</Relationships>");
    set_part(parts, "vba.png", "p");
    WorkbookFile file(parts, "t.xlsm");
    auto& workbook = file.open(U"t.xlsm");
    workbook.worksheet(1).set_cell(1, 1, 1.0);
    workbook.save_as(U"单据.2024");
    const auto plain = file.saved("单据.2024.xlsx");
    EXPECT_FALSE(part_of(plain, "xl/media/image1.png").empty()); // a sheet shows it too
    EXPECT_NE(part_of(plain, types).find("spreadsheetml.sheet.main+xml"), std::string::npos);
    for (const auto& [name, contents] : parts_of(plain)) {
        EXPECT_EQ(name.find("vba"), std::string::npos) << name;
        EXPECT_TRUE(name.starts_with("xl/media") || contents.find("vba") == std::string::npos) << name;
    }
    workbook.worksheet(1).set_cell(1, 1, 2.0);
    workbook.close(true);
    auto& again = file.open(U"单据.2024.xlsx");
    EXPECT_EQ(again.worksheet(1).cell(1, 1), U"2");
    again.save_as(U"b.XLSM");
    EXPECT_NE(part_of(file.saved("b.XLSM"), types).find("sheet.macroEnabled.main+xml"), std::string::npos);
    EXPECT_EQ(failure_of([&] { again.save_as(U"c.xls"); }),
              "无法保存工作簿“c.xls”：内置引擎只能保存 .xlsx 和 .xlsm 格式。");
    EXPECT_EQ(file.saved("t.xlsm"), make_package(parts));
}

TEST(Saving, nothing_is_written_unless_it_is_asked_for)
{
    const auto package = make_package(simple_parts(""));
    WorkbookFile file(package);
    file.open().worksheet(1).set_cell(1, 1, 1.0);
    auto& other = file.open();
    other.worksheet(1).set_cell(1, 1, 2.0);
    other.close(false);
    file.application->quit();
    EXPECT_EQ(file.saved(), package);

    auto& workbook = file.open();
    workbook.worksheet(1).set_cell(1, 1, 3.0);
    workbook.save_as(U"b.xlsx");
    const auto stamp = file.files.stamp(U"b.xlsx");
    workbook.close(true);
    EXPECT_EQ(file.files.stamp(U"b.xlsx"), stamp);
    EXPECT_EQ(failure_of([&] { workbook.worksheet(1); }), "工作簿“b.xlsx”已经关闭。");
}

TEST(Saving, a_save_that_fails_is_told_and_can_be_done_elsewhere)
{
    const auto package = make_package(simple_parts(""));
    WorkbookFile file(package);
    auto& workbook = file.open();
    workbook.worksheet(1).set_cell(1, 1, 1.0);
    EXPECT_NE(failure_of([&] { workbook.save_as(U"没有的文件夹/b.xlsx"); }).find("没有的文件夹"), std::string::npos);
    EXPECT_EQ(file.saved(), package);
    workbook.worksheet(1).set_cell(1, 2, 2.0);
    workbook.close(true); // it still stands for the file that it was opened from
    auto& again = file.open();
    EXPECT_EQ(again.worksheet(1).cell(1, 1) + again.worksheet(1).cell(1, 2), U"12");
    again.worksheet(1).set_cell(1, 1, 3.0);
    std::filesystem::remove(file.folder.path() / "t.xlsx");
    std::filesystem::create_directory(file.folder.path() / "t.xlsx");
    EXPECT_NE(failure_of([&] { again.close(true); }), "no failure");
    EXPECT_EQ(again.worksheet(1).cell(1, 1), U"3"); // nothing is lost
}

TEST(Printing, the_printer_gets_the_workbook_as_it_is_now)
{
    WorkbookFile file(simple_parts(""));
    const auto workbook = ooxml_workbooks(file.files, file.printer)(U"t.xlsx");
    workbook->worksheet(1).print_out();
    workbook->worksheet(1).set_cell(1, 1, 7.0);
    workbook->worksheet(1).print_out();
    workbook->close(true);
    EXPECT_EQ(file.printer.printed, (std::vector<Text>{U"t.xlsx", U"t.xlsx"}));
    const auto& printed = file.printer.files;
    EXPECT_EQ(printed[0].first, file.files.resolve(U"t.xlsx"));
    EXPECT_EQ(part_of(printed[0].second, sheet1), part_of(make_package(simple_parts("")), sheet1));
    EXPECT_EQ(part_of(printed[1].second, sheet1), part_of(file.saved(), sheet1));
    EXPECT_FALSE(std::filesystem::exists(printed[1].first.parent_path()));
}

} // namespace tarvik::test
