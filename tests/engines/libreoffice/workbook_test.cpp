#include "engines/packages/damage.h"
#include "engines/packages/package.h"
#include "tests/engines/libreoffice/office_fixture.h"
#include "tests/engines/spreadsheets/random_sheet.h"
#include "tests/engines/spreadsheets/workbook_parts.h"
#include "tests/support/places.h"

namespace tarvik::test {

using OfficeWorkbook = OfficeTest;

namespace {

/// It makes a workbook as large as those that spreadsheet applications write.
const std::string long_row =
    "<row r=\"9\"><c r=\"A9\" t=\"inlineStr\"><is><t>" + std::string(5'000, 'x') + "</t></is></c></row>";

} // namespace

// What a write does is the embedded engine's affair, whose own tests say it; LibreOffice is to hold the same cells.
TEST_F(OfficeWorkbook, what_is_saved_is_what_was_written_whatever_the_format)
{
    const std::u32string_view texts[] = {U"00123", U"=1+1", U"一\r\n二😀", U"'x", U" 两端 ",
                                         U"1e5",   U"#N/A", U"TRUE",      U"7",  U""};
    unsigned seed = 0;
    for (const std::string name : {"u.xls", "u.xlsx", "u.xlsm", "u.2024"}) {
        RandomSheet random(++seed, false);
        make_workbook("t.xls", random.rows("<v>-99</v>"),
                      "<mergeCells><mergeCell ref=\"I2:K3\"/><mergeCell ref=\"I5:I9\"/></mergeCells>");
        const auto before = folder.read("t.xls");
        auto application = engines.create_spreadsheet();
        auto& workbook = application->open(U"t.xls");
        ASSERT_EQ(workbook.worksheet_count(), 2);
        auto& sheet = workbook.worksheet(1);
        for (int edit = 0; edit < 80; ++edit) {
            const int row = 1 + random.below(13), column = 1 + random.below(12);
            const auto text = texts[static_cast<std::size_t>(random.below(std::size(texts)))];
            if (edit % 8 == 0) sheet.clear(row, row + 1, column, column + 1);
            else sheet.set_cell(row, column, edit % 3 == 0 ? CellValue(edit / 8.0) : CellValue(Text(text)));
        }
        workbook.worksheet(2).set_cell(65'536, 256, Text(U"末"));
        const auto cells_of = [](Worksheet& read) {
            std::vector<std::string> cells;
            for (int row = 1; row <= 14; ++row)
                for (int column = 1; column <= 13; ++column)
                    cells.push_back(std::to_string(row) + " " + std::to_string(column) + " " +
                                    to_utf8(read.cell(row, column)) +
                                    (std::holds_alternative<double>(read.value(row, column)) ? "#" : ""));
            return cells;
        };
        const auto expected = cells_of(sheet);
        workbook.save_as(from_utf8(name));
        EXPECT_EQ(sheet.clear(1, 14, 1, 13) > 0, true);
        workbook.close(false);
        EXPECT_EQ(folder.read("t.xls"), before);
        const auto saved = name == "u.2024" ? "u.2024.xlsx" : name;
        EXPECT_EQ(folder.read(saved).substr(0, 2), name == "u.xls" ? "\xd0\xcf" : "PK");
        auto& again = application->open(from_utf8(saved));
        EXPECT_EQ(cells_of(again.worksheet(1)), expected) << name;
        EXPECT_EQ(to_utf8(again.worksheet(2).cell(65'536, 256)), "末");
    }
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

TEST_F(OfficeWorkbook, a_note_stays_with_its_cell_and_an_array_formula_is_never_kept_in_silence)
{
    auto parts = simple_parts("<row r=\"1\"><c r=\"B1\"><f t=\"array\" ref=\"B1:C1\">A1:B1+1</f><v>1</v></c>"
                              "<c r=\"C1\"><v>1</v></c><c r=\"D1\"><v>7</v></c></row>");
    const std::string relations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    parts.emplace_back("xl/worksheets/_rels/sheet1.xml.rels",
                       "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
                       "<Relationship Id=\"rId1\" Type=\"" +
                           relations +
                           "/comments\" Target=\"../comments1.xml\"/>"
                           "</Relationships>");
    std::string notes;
    for (const std::string cell : {"B1", "C1", "D1"})
        notes += "<comment ref=\"" + cell + "\" authorId=\"0\"><text><t>批注</t></text></comment>";
    parts.emplace_back("xl/comments1.xml",
                       "<comments xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
                       "<authors><author>我</author></authors><commentList>" +
                           notes + "</commentList></comments>");
    folder.write("source.xlsx", make_package(parts));
    convert("source.xlsx", "t.xls", "MS Excel 97");
    auto application = engines.create_spreadsheet();
    auto& workbook = application->open(U"t.xls");
    workbook.worksheet(1).set_cell(1, 4, Text(U"新"));
    workbook.save_as(U"u.xls");
    convert("u.xls", "u.xlsx", "Calc MS Excel 2007 XML");
    const auto written = ooxml::Package(folder.read("u.xlsx")).part("xl/comments1.xml");
    for (const char* cell : {"\"B1\"", "\"C1\"", "\"D1\""}) EXPECT_NE(written.find(cell), std::string::npos) << written;
    workbook.worksheet(1).clear(1, 2, 2, 3);
    EXPECT_EQ(
        failure_of([&] { workbook.save_as(U"v.xls"); }),
        "无法处理工作簿“u.xls”：LibreOffice 拒绝了操作（第 1 行、第 2 列起的单元格不能改写，那里可能有数组公式）。");
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
    sheet.set_cell(65'537, 1, 1.0);
    const auto bytes = folder.read("t.xls");
    EXPECT_EQ(failure_of([&] { workbook.close(true); }),
              "无法处理工作簿“t.xls”：.xls 格式只有 65536 行、256 列，放不下工作表的内容。");
    EXPECT_EQ(folder.read("t.xls"), bytes);
    workbook.save_as(U"t.xlsx");
    workbook.close(true);
    EXPECT_EQ(failure_of([&] { application->open(U"t.xlsx").save_as(U"u.xls"); }),
              "无法处理工作簿“t.xlsx”：.xls 格式只有 65536 行、256 列，放不下工作表的内容。");
    EXPECT_FALSE(files.file_exists(U"u.xls"));
}

} // namespace tarvik::test
