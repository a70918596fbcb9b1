#include "engines/packages/damage.h"
#include "engines/packages/package.h"
#include "tests/engines/libreoffice/office_fixture.h"
#include "tests/engines/spreadsheets/workbook_parts.h"
#include "tests/support/python_reader.h"

#include <fstream>

namespace tarvik::test {

using OfficeWorkbook = OfficeTest;

namespace {

/// It makes a workbook as large as those that spreadsheet applications write.
const std::string long_row =
    "<row r=\"9\"><c r=\"A9\" t=\"inlineStr\"><is><t>" + std::string(5'000, 'x') + "</t></is></c></row>";

} // namespace

TEST_F(OfficeWorkbook, cells_of_an_xls_file_are_read_written_and_kept)
{
    make_workbook("t.xls",
                  "<row r=\"1\"><c r=\"A1\"><v>8.5</v></c><c r=\"B1\" t=\"s\"><v>1</v></c><c r=\"C1\" s=\"2\">"
                  "<v>45352</v></c><c r=\"D1\"><f>1/0</f></c><c r=\"E1\"><f>\"\"</f></c>"
                  "<c r=\"F1\"><f>A1*2</f></c></row>",
                  "<mergeCells><mergeCell ref=\"B3:D4\"/><mergeCell ref=\"A6:A8\"/></mergeCells>");
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    ASSERT_EQ(workbook.worksheet_count(), 2);
    auto& sheet = workbook.worksheet(1);
    std::string row;
    for (int column = 1; column <= 7; ++column)
        row += to_utf8(sheet.cell(1, column)) + (sheet.is_empty(1, column) ? " -|" : "|");
    EXPECT_EQ(row, "8.5|粗体 |45352|#DIV/0!| -|17| -|");

    sheet.set_cell(2, 1, Text(U"00123"));
    sheet.set_cell(2, 2, Text(U"=1+1"));
    sheet.set_cell(2, 3, Text(U"一\r\n二😀'"));
    sheet.set_cell(2, 4, 0.1);
    sheet.set_cell(2, 5, Text(U"'x"));
    sheet.set_cell(1, 3, 45353.0);
    sheet.set_cell(4, 3, Text(U"合并"));
    sheet.set_cell(3, 3, Text());
    sheet.set_cell(8, 1, 7.0);
    sheet.set_cell(1, 2, Text());
    sheet.set_cell(1, 2, Text());
    workbook.worksheet(2).set_cell(65'536, 256, Text(U"末"));
    EXPECT_EQ(to_utf8(sheet.cell(3, 2)), "合并");
    EXPECT_TRUE(sheet.is_empty(4, 3));
    workbook.save_as(U"u.xls");
    EXPECT_EQ(sheet.clear(2, 2, 1, 9), 5);
    workbook.close(true);

    auto& again = application->open(U"u.xls");
    EXPECT_TRUE(again.worksheet(1).is_empty(2, 3));
    EXPECT_EQ(to_utf8(again.worksheet(2).cell(65'536, 256)), "末");
    again.close(false);
    auto& old = application->open(U"t.xls").worksheet(1);
    EXPECT_EQ(to_utf8(old.cell(1, 2)), "粗体 ");
    EXPECT_TRUE(old.is_empty(2, 1));
}

TEST_F(OfficeWorkbook, texts_stay_texts_through_every_format)
{
    make_workbook("t.xls", "<row r=\"1\"><c r=\"C1\" s=\"2\"><v>45352</v></c></row>",
                  "<mergeCells><mergeCell ref=\"B3:D4\"/></mergeCells>");
    for (const char* name : {"u.xls", "u.xlsx", "u.xlsm", "u.2024"}) {
        auto application = engines.create_spreadsheet();
        auto& workbook = application->open(U"t.xls");
        auto& sheet = workbook.worksheet(1);
        const std::u32string_view texts[] = {U"00123", U"=1+1", U"一\n二😀", U"'x", U" 两端 ", U"1e5", U"#N/A", U"TRUE"};
        int column = 0;
        for (const auto text : texts) sheet.set_cell(2, ++column, Text(text));
        sheet.set_cell(1, 3, 45353.5);
        sheet.set_cell(4, 3, Text(U"合并"));
        workbook.save_as(from_utf8(name));
        workbook.close(true);
        const auto saved = std::string_view(name) == "u.2024" ? U"u.2024.xlsx" : from_utf8(name);
        auto& again = application->open(saved).worksheet(1);
        column = 0;
        for (const auto text : texts) EXPECT_EQ(to_utf8(again.cell(2, ++column)), to_utf8(text)) << name;
        EXPECT_EQ(to_utf8(again.cell(1, 3)), "45353.5") << name;
        EXPECT_EQ(to_utf8(again.cell(3, 2)), "合并") << name;
    }
    EXPECT_EQ(folder.read("u.xls").substr(0, 4), "\xd0\xcf\x11\xe0");
    EXPECT_EQ(folder.read("u.xlsx").substr(0, 2), "PK");
}

TEST_F(OfficeWorkbook, texts_that_read_like_numbers_leave_the_format_of_their_cell)
{
    make_workbook("t.xls", "<row r=\"1\"><c r=\"D1\"><v>1</v></c><c r=\"E1\" s=\"2\"><v>45352</v></c></row>"
                           "<row r=\"2\"><c r=\"D2\" s=\"1\"><v>2</v></c><c r=\"E2\"><v>3</v></c></row>");
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    auto& sheet = workbook.worksheet(1);
    const std::u32string_view texts[] = {U"007", U"2024-3-1", U"50%", U"TRUE"};
    for (int place = 0; place < 4; ++place) sheet.set_cell(place / 2 + 1, place % 2 + 4, Text(texts[place]));
    workbook.save_as(U"u.xlsx");
    workbook.close(true);
    const auto made = read_by_python("tests/engines/spreadsheets/read_workbook.py", folder.path() / "u.xlsx");
    for (const char* cell : {R"("D1", "s", "007", "General"])", R"("E1", "s", "2024-3-1", "m/d/yyyy"])",
                             R"("D2", "s", "50%", "0.00\\元"])", R"("E2", "s", "TRUE", "General"])"})
        EXPECT_NE(made.find(cell), std::string::npos) << cell << " is missing in\n" << made;
}

TEST_F(OfficeWorkbook, a_workbook_without_a_change_is_not_written)
{
    make_workbook("t.xls", "<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    const auto stamp = files.stamp(U"t.xls");
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    workbook.worksheet(1).set_cell(9, 9, Text());
    EXPECT_EQ(workbook.worksheet(1).clear(8, 1000, 1, 10), 0);
    workbook.close(true);
    EXPECT_EQ(files.stamp(U"t.xls"), stamp);
    application->open(U"t.xls").worksheet(1).set_cell(1, 1, 2.0);
    application->quit();
    EXPECT_EQ(files.stamp(U"t.xls"), stamp);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2); // no lock file beside it
}

TEST_F(OfficeWorkbook, a_package_is_calculated_anew_whatever_results_it_brings)
{
    const std::string row = "<row r=\"1\"><c r=\"A1\"><v>3</v></c><c r=\"B1\"><f>A1*2</f><v>99</v></c>"
                            "<c r=\"C1\"><f>A1+B1</f></c><c r=\"D1\" t=\"str\"><f>\"a\"&amp;C1</f><v>x</v></c></row>";
    folder.write("t.xlsx", libreoffice::recalculated(office, make_package(simple_parts(row))));
    auto application = engines.create_spreadsheet();
    auto& sheet = application->open(U"t.xlsx").worksheet(1);
    EXPECT_EQ(to_utf8(sheet.cell(1, 2) + U" " + sheet.cell(1, 3) + U" " + sheet.cell(1, 4)), "6 9 a9");
    EXPECT_THROW(libreoffice::recalculated(office, "PK\x03\x04 no package"), ooxml::Damage);
}

TEST_F(OfficeWorkbook, a_protected_sheet_is_filled_and_stays_protected_unless_it_has_a_password)
{
    const std::string before = "<sheetProtection ", behind = "sheet=\"1\" formatCells=\"0\"/>";
    make_workbook("t.xls", "", before + behind);
    make_workbook("locked.xls", "", before + "password=\"CC1A\" " + behind);
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    workbook.worksheet(1).set_cell(1, 1, Text(U"新"));
    workbook.save_as(U"u.xls");
    workbook.close(true);
    EXPECT_EQ(to_utf8(application->open(U"u.xls").worksheet(1).cell(1, 1)), "新");
    convert("u.xls", "u.xlsx", "Calc MS Excel 2007 XML");
    EXPECT_NE(ooxml::Package(folder.read("u.xlsx")).part("xl/worksheets/sheet1.xml").find("<sheetProtection "),
              std::string::npos);
    EXPECT_EQ(failure_of([&] { application->open(U"locked.xls").worksheet(1); }),
              "无法处理工作簿“locked.xls”：工作表有密码保护，不能填写；请先撤销工作表保护。");
}

TEST_F(OfficeWorkbook, the_advice_to_read_only_is_not_followed_and_a_password_for_changes_is_respected)
{
    make_workbook("t.xls", long_row);
    auto bytes = folder.read("t.xls");
    const auto record = bytes.find(std::string("\x5c\0\x70\0", 4)); // whoever wrote the file, in 112 bytes
    ASSERT_LT(record, bytes.size());
    bytes.replace(record, 11, std::string("\x5b\0\x70\0\1\0\0\0\0\0\0", 11));
    folder.write("advice.xls", bytes);
    bytes.replace(record + 6, 2, "\x1a\xcc");
    folder.write("password.xls", bytes);
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"advice.xls");
    workbook.worksheet(1).set_cell(1, 1, Text(U"新"));
    workbook.close(true);
    EXPECT_EQ(to_utf8(application->open(U"advice.xls").worksheet(1).cell(1, 1)), "新");
    EXPECT_EQ(failure_of([&] { application->open(U"password.xls").worksheet(1); }),
              "无法处理工作簿“password.xls”：工作簿设有修改密码，不能填写。");
}

TEST_F(OfficeWorkbook, what_the_format_cannot_hold_is_refused)
{
    make_workbook("t.xls", "");
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    auto& sheet = workbook.worksheet(1);
    EXPECT_EQ(failure_of([&] { sheet.set_cell(0, 1, 1.0); }),
              "无法处理工作簿“t.xls”：工作表没有第 0 行、第 1 列的单元格。");
    EXPECT_THROW(workbook.worksheet(3), Failure);
    sheet.set_cell(65'537, 1, 1.0);
    const auto bytes = folder.read("t.xls");
    EXPECT_EQ(failure_of([&] { workbook.close(true); }),
              "无法处理工作簿“t.xls”：.xls 格式只有 65536 行、256 列，放不下工作表的内容。");
    EXPECT_EQ(folder.read("t.xls"), bytes);
    workbook.save_as(U"t.xlsx");
    workbook.close(true);
    EXPECT_EQ(failure_of([&] { workbook.worksheet(1); }), "工作簿“t.xlsx”已经关闭。");
    EXPECT_EQ(failure_of([&] { application->open(U"t.xlsx").save_as(U"u.xls"); }),
              "无法处理工作簿“t.xlsx”：.xls 格式只有 65536 行、256 列，放不下工作表的内容。");
    EXPECT_FALSE(files.file_exists(U"u.xls"));
}

TEST_F(OfficeWorkbook, the_printer_gets_the_workbook_as_it_is_now)
{
    make_workbook("t.xls", "");
    struct : Printer {
        Text name;
        std::string bytes;
        void print(const std::filesystem::path& file, TextView told) override
        {
            name = told.str();
            std::ifstream stream(file, std::ios::binary);
            bytes.assign(std::istreambuf_iterator<char>(stream), {});
        }
    } copying;
    LibreOfficeEngines printing(office, files, copying);
    auto application = printing.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    workbook.worksheet(1).set_cell(1, 1, Text(U"打印"));
    workbook.worksheet(1).print_out();
    workbook.close(false);
    EXPECT_EQ(copying.name, U"t.xls");
    folder.write("printed.xls", copying.bytes);
    EXPECT_EQ(application->open(U"printed.xls").worksheet(1).cell(1, 1), U"打印");
}

} // namespace tarvik::test
