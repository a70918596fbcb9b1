#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/calculation/places.h"
#include "tests/engines/spreadsheets/workbook_file.h"

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

const std::string sheet1 = "xl/worksheets/sheet1.xml";
const std::string strings = "xl/sharedStrings.xml";

/// What stands in <sheetData>.
std::string data_of(const std::string& sheet)
{
    const auto start = sheet.find("sheetData>") + 10;
    return sheet.substr(start, sheet.rfind('<', sheet.rfind("sheetData>")) - start);
}

} // namespace

TEST(Editing, everything_that_is_not_named_stays_byte_for_byte)
{
    WorkbookFile file(make_package(rich_parts(), false), "t.xlsm");
    auto& workbook = file.open(U"t.xlsm");
    ASSERT_EQ(workbook.worksheet_count(), 2);
    auto& sheet = workbook.worksheet(1);
    sheet.set_cell(2, 3, Text(U"<新>\r\n值"));
    sheet.set_cell(6, 1, 8.5);
    sheet.set_cell(7, 4, Text(U"客户"));
    workbook.close(true);

    auto expected = rich_parts();
    std::erase_if(expected, [](const auto& part) { return part.first == "xl/calcChain.xml"; });
    edit_part(expected, "[Content_Types].xml",
              "<Override PartName=\"/xl/calcChain.xml\" "
              "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.calcChain+xml\"/>",
              "");
    edit_part(expected, "xl/_rels/workbook.xml.rels",
              "<Relationship Id=\"rId6\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
              "calcChain\" Target=\"calcChain.xml\"/>",
              "");
    edit_part(expected, "xl/workbook.xml", "</definedNames>", "</definedNames><calcPr fullCalcOnLoad=\"1\"/>");
    edit_part(expected, strings, "</sst>", "<si><t xml:space=\"preserve\">&lt;新&gt;\n值</t></si></sst>");
    edit_part(expected, strings, "count=\"3\" uniqueCount=\"3\"", "count=\"4\" uniqueCount=\"4\"");
    edit_part(expected, sheet1, "<c r=\"C2\" s=\"3\" t=\"s\"><v>1</v>", "<c r=\"C2\" s=\"3\" t=\"s\"><v>3</v>");
    edit_part(
        expected, sheet1, "<v>是</v></c></row>",
        "<v>是</v></c></row><row r=\"6\"><c r=\"A6\"><v>8.5</v></c><c r=\"B6\" s=\"3\" t=\"s\"><v>0</v></c></row>");
    edit_part(expected, sheet1, "B2:C4", "A2:C6");
    edit_part(expected, sheet1, "'他说\"好\"'", "\"他说&quot;好&quot;\"");
    int stored = 0;
    const auto parts = parts_of(file.saved("t.xlsm"), &stored);
    ASSERT_EQ(parts.size(), expected.size());
    for (std::size_t i = 0; i < parts.size(); ++i) EXPECT_EQ(parts[i], expected[i]);
    // What is copied as it lies there stays uncompressed; only the five parts above are packed anew.
    EXPECT_EQ(stored, static_cast<int>(expected.size()) - 5);
}

TEST(Editing, a_workbook_without_a_change_keeps_every_byte)
{
    const auto package = make_package(rich_parts());
    WorkbookFile file(package);
    const auto stamp = file.files.stamp(U"t.xlsx");
    auto& workbook = file.open();
    auto& sheet = workbook.worksheet(1);
    EXPECT_EQ(sheet.clear(8, 1000, 1, 10), 0);
    sheet.set_cell(9, 9, Text());
    sheet.set_cell(6, 3, Text());
    workbook.close(true);
    EXPECT_EQ(file.files.stamp(U"t.xlsx"), stamp);

    auto& again = file.open();
    again.save_as(U"副本.xlsm");
    again.close(true);
    EXPECT_EQ(file.saved("副本.xlsm"), package);
}

TEST(Editing, cells_read_as_their_values)
{
    struct Case {
        const char* cell;
        std::u32string_view text;
        bool is_empty;
    };
    const Case cases[] = {
        {"><v>8.4999999999999996</v></c>", U"8.5", false},
        {"><v>1E3</v></c>", U"1000", false},
        {" t=\"s\"><v> 1 </v></c>", U"粗体 ", false},
        {" t=\"s\"><v>2</v></c>", U"a & b", false},
        {" t=\"s\"/>", U"", true},
        {" t=\"b\"><v>1</v></c>", U"True", false},
        {" t=\"b\"><v>0</v></c>", U"False", false},
        {" t=\"b\"/>", U"", true},
        {" t=\"b\"><v/></c>", U"", true},
        {" t=\"e\"><v>#DIV/0!</v></c>", U"#DIV/0!", false},
        {" t=\"d\"><v>2024-03-01T12:00:00</v></c>", U"45352.5", false},
        {" t=\"d\"><v>2024-03-01T11:59:59.7Z</v></c>", U"45352.5", false},
        {" t=\"d\"><v>18:00:00</v></c>", U"0.75", false},
        {" t=\"d\"><v>1900-02-28</v></c>", U"59", false},
        {" t=\"d\"><v>1900-03-01</v></c>", U"61", false},
        {" t=\"d\"><v>2023-02-29</v></c>", U"2023-02-29", false},
        {" t=\"inlineStr\"><is><t>a_x000A_b_x005F_x0041_&#x4E2D;<![CDATA[<c>]]></t></is></c>", U"a\nb_x0041_中<c>",
         false},
        {" t=\"str\"><f>A1&amp;\"\"</f><v>_x4E2D__xD83D_</v></c>", U"中\uFFFD", false},
        {"><f>SUM(A1)+1</f></c>", U"1", false},
        {" t=\"str\"><f>A1&amp;\"\"</f><v></v></c>", U"", true},
        {"><f>A1&amp;\"\"</f></c>", U"", true},
        {"><f t=\"array\" ref=\"B3:B4\">C3:C4+2</f></c>", U"2", false},
        {"><v></v></c>", U"", true},
        {" s=\"1\"/>", U"", true},
    };
    for (const auto& one : cases) {
        WorkbookFile file(simple_parts(std::string("<row r=\"3\"><c r=\"B3\"").append(one.cell).append("</row>")));
        auto& sheet = file.open().worksheet(1);
        EXPECT_EQ(to_utf8(sheet.cell(3, 2)), to_utf8(one.text)) << one.cell;
        EXPECT_EQ(sheet.is_empty(3, 2), one.is_empty) << one.cell;
    }
}

TEST(Editing, a_written_cell_loses_what_belonged_to_its_old_value)
{
    struct Case {
        const char* before;
        CellValue value;
        const char* after;
    };
    const Case cases[] = {
        {"<c r=\"B2\" s=\"1\" t=\"str\" cm=\"1\"><f ca=\"1\">A1</f><v>x</v></c>", 2.0,
         "<c r=\"B2\" s=\"1\"><v>2</v></c>"},
        {"<c r=\"B2\" t=\"inlineStr\"><is><r><t>x</t></r></is></c>", Text(U"客户"), "<c r=\"B2\" t=\"s\"><v>0</v></c>"},
        {"<c r=\"B2\" t=\"e\"><v>#N/A</v><extLst/></c>", Text(), "<c r=\"B2\"><extLst/></c>"},
        {"<c r=\"B2\" s=\"1\" t=\"b\"><v>1</v></c>", Text(U"=1+1"), "<c r=\"B2\" s=\"1\" t=\"s\"><v>3</v></c>"},
        {"<c r=\"B2\" t=\"d\"><v>2024-03-01</v></c>", -0.0, "<c r=\"B2\"><v>0</v></c>"},
        {"<c r=\"B2\"/>", 1e300 * 1e300, "<c r=\"B2\" t=\"e\"><v>#NUM!</v></c>"},
        {"<c r=\"B2\"/>", 0.1 + 0.2, "<c r=\"B2\"><v>0.30000000000000004</v></c>"},
    };
    for (const auto& one : cases) {
        WorkbookFile file(simple_parts("<row r=\"2\">" + std::string(one.before) + "</row>"));
        EXPECT_EQ(data_of(file.sheet_after(2, 2, one.value)), "<row r=\"2\">" + std::string(one.after) + "</row>");
    }
}

TEST(Editing, missing_rows_and_cells_are_put_in_order_with_a_format)
{
    const std::string rows = "<row r=\"2\" spans=\"2:3\" s=\"2\" customFormat=\"1\"><c r=\"C2\"><v>1</v></c></row>"
                             "<row r=\"9\"><c r=\"B9\"><v>1</v></c></row>";
    struct Case {
        int row, column;
        const char* before;
        const char* after;
    };
    const Case cases[] = {
        {2, 2, "<row r=\"2\" spans=\"2:3\" s=\"2\" customFormat=\"1\">",
         "<row r=\"2\" s=\"2\" customFormat=\"1\"><c r=\"B2\" s=\"2\"><v>7</v></c>"},
        {5, 2, "<row r=\"9\">", "<row r=\"5\"><c r=\"B5\" s=\"3\"><v>7</v></c></row><row r=\"9\">"},
        {9, 28, "<c r=\"B9\"><v>1</v></c>", "<c r=\"B9\"><v>1</v></c><c r=\"AB9\"><v>7</v></c>"},
        {1, 1, "<row r=\"2\"", "<row r=\"1\"><c r=\"A1\"><v>7</v></c></row><row r=\"2\""},
    };
    for (const auto& one : cases) {
        WorkbookFile file(simple_parts(rows));
        auto expected = rows;
        expected.replace(expected.find(one.before), std::string(one.before).size(), one.after);
        EXPECT_EQ(data_of(file.sheet_after(one.row, one.column, 7.0)), expected);
    }
}

TEST(Editing, places_may_be_left_out_and_names_may_have_a_prefix)
{
    auto parts = simple_parts("");
    set_part(parts, sheet1,
             "<x:worksheet xmlns:x=\"http://purl.oclc.org/ooxml/spreadsheetml/main\"><x:sheetData>"
             "<x:row r=\"3\"><x:c><x:v>1</x:v></x:c><x:c r=\"D3\"><x:v>2</x:v></x:c><x:c><x:v>3</x:v></x:c></x:row>"
             "<x:row><x:c><x:v>4</x:v></x:c></x:row><x:row r=\"7\"/></x:sheetData></x:worksheet>");
    WorkbookFile file(parts);
    auto& sheet = file.open().worksheet(1);
    EXPECT_EQ(sheet.cell(3, 5), U"3");
    EXPECT_EQ(sheet.cell(4, 1), U"4");
    EXPECT_EQ(
        data_of(file.sheet_after(3, 2, Text(U"客户"))),
        "<x:row r=\"3\"><x:c r=\"A3\"><x:v>1</x:v></x:c><x:c r=\"B3\" t=\"s\"><x:v>0</x:v></x:c><x:c r=\"D3\">"
        "<x:v>2</x:v></x:c><x:c r=\"E3\"><x:v>3</x:v></x:c></x:row><x:row r=\"4\"><x:c r=\"A4\"><x:v>4</x:v></x:c>"
        "</x:row><x:row r=\"7\"/>");
}

TEST(Editing, a_workbook_without_shared_texts_gets_texts_in_the_cells)
{
    auto parts = simple_parts("");
    std::erase_if(parts, [](const auto& part) { return part.first == strings; });
    edit_part(parts, "xl/_rels/workbook.xml.rels", "relationships/sharedStrings", "relationships/other");
    WorkbookFile file(parts);
    EXPECT_EQ(data_of(file.sheet_after(1, 1, Text(U" 00123"))),
              "<row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t xml:space=\"preserve\"> 00123</t></is></c></row>");
    EXPECT_EQ(file.open().worksheet(1).cell(1, 1), U" 00123");
}

TEST(Editing, a_shared_formula_outlives_the_cell_that_stated_it)
{
    WorkbookFile file(simple_parts("<row r=\"1\"><c r=\"A1\"><f t=\"shared\" ref=\"A1:C1\" si=\"0\">A2*2</f></c>"
                                   "<c r=\"B1\"><f t=\"shared\" si=\"0\"/></c>"
                                   "<c r=\"C1\"><f t=\"shared\" si=\"0\"/><v>9</v></c></row>"));
    Workbook& workbook = file.open();
    Worksheet& sheet = workbook.worksheet(1);
    for (const int column : {2, 1}) {
        sheet.set_cell(1, column, 5.0);
        EXPECT_EQ(sheet.cell(1, column), U"5");
    }
    workbook.close(true);
    EXPECT_EQ(data_of(part_of(file.saved(), sheet1)),
              "<row r=\"1\"><c r=\"A1\"><v>5</v></c><c r=\"B1\"><v>5</v></c><c r=\"C1\"><f>C2*2</f><v>9</v></c></row>");
}

TEST(Editing, a_formula_for_another_cell_moves_its_relative_references_alone)
{
    struct Case {
        std::string formula;
        int row, column;
        std::string shifted;
    };
    const Case cases[] = {
        {"A1+$B$2+C$3+$D4", 3, 2, "B3+$B$2+D$3+$D6"},
        {"\"A1\"\"A1\"+A1+LOG10(Z9)", 2, 2, "\"A1\"\"A1\"+B2+LOG10(AA10)"},
        {"'A1 ''B2'!A1+表A1!A1+[1]Sheet1!B2", 2, 1, "'A1 ''B2'!A2+表A1!A2+[1]Sheet1!B3"},
        {"SUM(A:$C,$1:3)", 2, 2, "SUM(B:$C,$1:4)"},
        {"SUM(A1:A3!B1,AB:AC!B1)", 2, 1, "SUM(A1:A3!B2,AB:AC!B2)"},
        {"T[[#This Row],[A1]]+T1[A']1]*A1", 2, 1, "T[[#This Row],[A1]]+T1[A']1]*A2"},
        {"IF(A1=#N/A,#REF!B1)+1E3+XFE1+A1048577+TRUE", 2, 1, "IF(A2=#N/A,#REF!B2)+1E3+XFE1+A1048577+TRUE"},
        {"A1+XFD1048576", 2, 2, "B2+A1"},
        {"\"open A1", 2, 2, "\"open A1"},
    };
    for (const auto& one : cases) {
        const auto other = "<c r=\"" + ooxml::place_name({one.row, one.column}) + "\"><f";
        WorkbookFile file(simple_parts("<row r=\"1\"><c r=\"A1\"><f t=\"shared\" ref=\"A1:B3\" si=\"0\">" +
                                       one.formula + "</f></c></row><row r=\"" + std::to_string(one.row) + "\">" +
                                       other + " t=\"shared\" si=\"0\"/><v>7</v></c></row>"));
        EXPECT_NE(ooxml::unescaped(file.sheet_after(1, 1, 1.0)).find(other + ">" + one.shifted + "</f>"),
                  std::string::npos)
            << one.formula;
    }
}

TEST(Editing, an_array_formula_is_lost_as_a_whole_or_not_at_all)
{
    WorkbookFile file(simple_parts("<row r=\"1\"><c r=\"A1\"><f t=\"array\" ref=\"A1:B1\">C1:D1</f><v>1</v></c>"
                                   "<c r=\"B1\"><v>2</v></c><c r=\"C1\"><v>3</v></c></row>"));
    auto& workbook = file.open();
    auto& sheet = workbook.worksheet(1);
    const auto refused =
        "无法处理工作簿“t.xlsx”：单元格区域 A1:B1 由一个数组公式或模拟运算表填写，不能只改其中一部分。";
    EXPECT_EQ(failure_of([&] { sheet.set_cell(1, 2, 5.0); }), refused);
    EXPECT_EQ(failure_of([&] { sheet.clear(1, 1, 2, 3); }), refused);
    EXPECT_EQ(sheet.cell(1, 3), U"3");
    sheet.set_cell(1, 3, 4.0);
    workbook.close(true);
    EXPECT_EQ(data_of(part_of(file.saved(), sheet1)),
              "<row r=\"1\"><c r=\"A1\"><f t=\"array\" ref=\"A1:B1\">C1:D1</f><v>4</v></c>"
              "<c r=\"B1\"><v>0</v></c><c r=\"C1\"><v>4</v></c></row>");
    auto& again = file.open().worksheet(1);
    EXPECT_FALSE(again.is_empty(1, 2));
    EXPECT_EQ(again.clear(1, 1, 1, 9), 3);
}

TEST(Editing, the_headers_of_a_table_stay_as_its_part_names_them)
{
    auto parts =
        simple_parts("<row r=\"2\"><c r=\"A2\" t=\"s\"><v>0</v></c></row><row r=\"3\"><c r=\"A3\"><v>1</v></c></row>");
    set_part(parts, "xl/worksheets/_rels/sheet1.xml.rels",
             "<Relationships><Relationship Id=\"r\" Type=\"a/table\" Target=\"../tables/t.xml\"/></Relationships>");
    set_part(parts, "xl/tables/t.xml", "<table ref=\"A2:B9\"/>");
    WorkbookFile file(parts);
    auto& sheet = file.open().worksheet(1);
    sheet.set_cell(2, 1, Text(U"客户"));
    const auto refused = "无法处理工作簿“t.xlsx”：单元格 A2 是表格的列标题，不能改写。";
    EXPECT_EQ(failure_of([&] { sheet.set_cell(2, 1, Text(U"名称")); }), refused);
    EXPECT_EQ(failure_of([&] { sheet.clear(1, 9, 1, 1); }), refused);
    EXPECT_EQ(sheet.clear(3, 9, 1, 2), 1);
}

TEST(Editing, places_outside_of_a_sheet_are_failures)
{
    WorkbookFile file(simple_parts(""));
    auto& workbook = file.open();
    auto& sheet = workbook.worksheet(1);
    sheet.set_cell(1'048'576, 16'384, 1.0);
    const std::pair<int, int> outside[] = {{0, 1}, {1, 0}, {-5, 1}, {1'048'577, 1}, {1, 16'385}};
    for (const auto& [row, column] : outside) {
        EXPECT_THROW(sheet.cell(row, column), Failure);
        EXPECT_THROW(sheet.set_cell(row, column, Text()), Failure);
        EXPECT_THROW(sheet.clear(row, 1'048'577, column, 16'385), Failure);
    }
    EXPECT_EQ(sheet.clear(5, 4, 1, 1), 0);
    EXPECT_THROW(workbook.worksheet(0), Failure);
    EXPECT_THROW(workbook.worksheet(3), Failure);
}

} // namespace tarvik::test
