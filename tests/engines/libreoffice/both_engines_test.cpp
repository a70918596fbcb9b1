#include "runs/engines.h"
#include "tests/engines/libreoffice/office_fixture.h"
#include "tests/engines/spreadsheets/random_sheet.h"
#include "tests/engines/spreadsheets/workbook_parts.h"

namespace tarvik::test {

/// The same operations on the same .xlsx file through either engine; what they made is read by the embedded one.
class BothEngines : public OfficeTest, public testing::WithParamInterface<Engine> {
protected:
    std::unique_ptr<SpreadsheetApplication> create()
    {
        return GetParam() == Engine::Ooxml ? embedded->create_spreadsheet() : engines.create_spreadsheet();
    }

    void make_package_of(const std::string& rows, const std::string& behind = {})
    {
        folder.write("t.xlsx", make_package(simple_parts(rows, behind)));
    }

    std::unique_ptr<OfficeEngines> embedded = make_engines(Engine::Ooxml, files, printer, office);
};

TEST_P(BothEngines, cells_read_alike)
{
    make_package_of("<row r=\"3\"><c r=\"A3\"><v>8.4999999999999996</v></c><c r=\"B3\" t=\"s\"><v>1</v></c>"
                    "<c r=\"C3\" t=\"b\"><v>1</v></c><c r=\"D3\" t=\"b\"><v>0</v></c>"
                    "<c r=\"E3\" t=\"e\"><v>#DIV/0!</v></c><c r=\"F3\" s=\"2\"><v>45352.5</v></c>"
                    "<c r=\"G3\" t=\"str\"><f>\"\"</f><v></v></c><c r=\"H3\"><f>A3*2</f><v>17</v></c>"
                    "<c r=\"I3\" s=\"3\" t=\"inlineStr\"><is><t>00123</t></is></c><c r=\"J3\"><v>1</v></c>"
                    "<c r=\"K3\" s=\"1\"/></row>");
    auto application = create();
    auto& sheet = application->open(U"t.xlsx").worksheet(1);
    std::string row;
    for (int column = 1; column <= 11; ++column) {
        row += to_utf8(sheet.cell(3, column));
        row += sheet.is_empty(3, column) ? "-" : "";
        row += sheet.is_date(3, column) ? "@" : "";
        row += std::holds_alternative<double>(sheet.value(3, column)) ? "#|" : "|";
    }
    EXPECT_EQ(row, "8.5#|粗体 |True|False|#DIV/0!|45352.5@#|-|17#|00123|1#|-|");
    EXPECT_TRUE(sheet.is_empty(1'048'576, 16'384));
}

TEST_P(BothEngines, cells_are_written_alike)
{
    make_package_of("<row r=\"1\"><c r=\"A1\" s=\"2\"><v>1</v></c><c r=\"B1\"><f>A1</f><v>1</v></c>"
                    "<c r=\"C1\"><v>3</v></c></row><row r=\"8\"><c r=\"A8\"><v>8</v></c></row>",
                    "<mergeCells><mergeCell ref=\"B2:B9\"/><mergeCell ref=\"C5:E6\"/></mergeCells>");
    auto application = create();
    auto& workbook = application->open(U"t.xlsx");
    auto& sheet = workbook.worksheet(1);
    sheet.set_cell(1, 1, 2.5);
    sheet.set_cell(1, 2, Text(U"=1+1"));
    sheet.set_cell(6, 5, 1.0);
    sheet.set_cell(9, 2, Text(U"文"));
    sheet.set_cell(5, 4, Text());
    sheet.set_cell(1, 3, Text());
    sheet.set_cell(10, 1, Text(U"00123"));
    sheet.set_cell(10, 2, Text(U"一\r\n二"));
    EXPECT_EQ(to_utf8(sheet.cell(5, 3) + sheet.cell(2, 2)), "1文");
    EXPECT_TRUE(sheet.is_empty(6, 5) && sheet.is_empty(9, 2));
    EXPECT_EQ(sheet.clear(7, 1'000, 1, 1), 2);
    sheet.set_cell(10, 1, Text(U"'4"));
    workbook.save_as(U"新.2024");
    workbook.worksheet(2).set_cell(1, 1, 7.0);
    workbook.close(true);

    auto reading = embedded->create_spreadsheet();
    auto& made = reading->open(U"新.2024.xlsx");
    std::string all;
    for (const auto& [row, column] : {std::pair(1, 1), {1, 2}, {1, 3}, {2, 2}, {5, 3}, {8, 1}, {10, 1}, {10, 2}})
        all += to_utf8(made.worksheet(1).cell(row, column)) + "|";
    EXPECT_EQ(all, "2.5|=1+1||文|1||'4|一\n二|");
    EXPECT_EQ(to_utf8(made.worksheet(2).cell(1, 1)), "7");
    EXPECT_EQ(to_utf8(reading->open(U"t.xlsx").worksheet(1).cell(8, 1)), "8");
}

TEST_P(BothEngines, formulas_follow_what_was_written)
{
    make_package_of("<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"B1\"><f>A1*2</f><v>2</v></c>"
                    "<c r=\"C1\" t=\"str\"><f>IF(A1=\"\",\"\",\"SN\"&amp;A1)</f><v>SN1</v></c></row>");
    auto application = create();
    auto& workbook = application->open(U"t.xlsx");
    auto& sheet = workbook.worksheet(1);
    EXPECT_EQ(to_utf8(sheet.cell(1, 2) + sheet.cell(1, 3)), "2SN1");
    sheet.set_cell(1, 1, 5.0);
    EXPECT_EQ(to_utf8(sheet.cell(1, 2) + sheet.cell(1, 3)), "10SN5");
    EXPECT_EQ(sheet.clear(1, 1, 1, 1), 1);
    EXPECT_TRUE(sheet.is_empty(1, 3));
    EXPECT_EQ(sheet.clear(1, 1, 3, 3), 0);
    sheet.set_cell(1, 1, Text(U"7"));
    EXPECT_EQ(to_utf8(sheet.cell(1, 2) + sheet.cell(1, 3)), "14SN7");
    EXPECT_EQ(sheet.clear(1, 1, 1, 4), 2) << "twice nothing is 0, and goes; the number's text is nothing now";
    sheet.set_cell(1, 1, Text(U"8"));
    EXPECT_EQ(to_utf8(sheet.cell(1, 2) + sheet.cell(1, 3)), "SN8");
}

// Number format, text format, date format; then cells that formulas refer to, here and from another sheet.
TEST_P(BothEngines, texts_become_numbers_alike)
{
    make_package_of("<row r=\"1\"><c r=\"A1\" s=\"1\"/><c r=\"B1\" s=\"3\"/><c r=\"C1\" s=\"2\"/>"
                    "<c r=\"E1\"><f>AVERAGE(D1:D4,B1,C1)</f><v>0</v></c><c r=\"F1\"><f>7*6</f><v>42</v></c>"
                    "<c r=\"G1\"><f>F3+1</f><v>1</v></c><c r=\"H1\"><f>G1</f><v>1</v></c></row>");
    auto application = create();
    auto& workbook = application->open(U"t.xlsx");
    auto& sheet = workbook.worksheet(1);
    const std::pair<int, int> places[] = {{1, 1}, {1, 2}, {1, 3}, {1, 4}, {2, 4},
                                          {3, 4}, {5, 4}, {1, 6}, {1, 7}, {9, 9}};
    for (const auto& [row, column] : places) sheet.set_cell(row, column, Text(row == 2 ? U"0012" : U"90"));
    const auto kinds = [&](Worksheet& read) {
        std::string all;
        for (const auto& [row, column] : places)
            all += std::holds_alternative<double>(read.value(row, column)) ? 'n' : 't';
        return all;
    };
    EXPECT_EQ(kinds(sheet), "ntnntnttnt");
    EXPECT_EQ(to_utf8(sheet.cell(1, 5)), "90");
    workbook.close(true);
    auto reading = embedded->create_spreadsheet();
    auto& saved = reading->open(U"t.xlsx").worksheet(1);
    EXPECT_EQ(kinds(saved), "ntnntnttnt");
    EXPECT_EQ(to_utf8(saved.cell(2, 4)), "0012");
}

TEST_P(BothEngines, texts_for_one_merged_range_lose_nothing)
{
    make_package_of("<row r=\"2\"><c r=\"B2\"><v>7</v></c></row>",
                    "<mergeCells><mergeCell ref=\"B2:D3\"/><mergeCell ref=\"F2:G3\"/></mergeCells>");
    auto application = create();
    auto& workbook = application->open(U"t.xlsx");
    auto& sheet = workbook.worksheet(1);
    sheet.set_cell(2, 3, Text(U"一"));
    EXPECT_EQ(to_utf8(sheet.cell(2, 2) + sheet.cell(2, 3)), "一");
    sheet.set_cell(3, 4, Text(U"二"));
    sheet.set_cell(3, 7, Text(U"三"));
    sheet.set_cell(3, 7, Text(U"四"));
    sheet.set_cell(2, 7, Text());
    workbook.close(true);
    auto reading = embedded->create_spreadsheet();
    auto& saved = reading->open(U"t.xlsx").worksheet(1);
    std::string all;
    for (const auto& [row, column] : {std::pair(2, 2), {2, 3}, {3, 4}, {2, 6}, {3, 7}})
        all += to_utf8(saved.cell(row, column)) + "|";
    EXPECT_EQ(all, "7|一|二|四||");
}

TEST_P(BothEngines, texts_end_where_a_cell_does)
{
    make_package_of("");
    auto application = create();
    auto& workbook = application->open(U"t.xlsx");
    auto& sheet = workbook.worksheet(1);
    const Text most(32'767, U'字'), pair = U"😀";
    const std::pair<Text, Text> cases[] = {{most, most},
                                           {most + U"字", most},
                                           {most.substr(2) + pair, most.substr(2) + pair},
                                           {most.substr(1) + pair, most.substr(1)},
                                           {Text(20'000, U'😀'), Text(16'383, U'😀')},
                                           {U"一\r\n二\r\n", U"一\n二\n"}};
    int row = 0;
    for (const auto& [given, kept] : cases) {
        sheet.set_cell(++row, 1, given);
        EXPECT_TRUE(sheet.cell(row, 1) == kept) << row << " as it is read at once";
    }
    workbook.close(true);
    auto reading = embedded->create_spreadsheet();
    auto& saved = reading->open(U"t.xlsx").worksheet(1);
    row = 0;
    for (const auto& [given, kept] : cases) EXPECT_TRUE(saved.cell(++row, 1) == kept) << row;
}

TEST_P(BothEngines, what_cannot_be_done_is_refused_alike)
{
    make_package_of("");
    auto application = create();
    auto& workbook = application->open(U"t.xlsx");
    EXPECT_THROW(workbook.worksheet(0), Failure);
    EXPECT_THROW(workbook.worksheet(3), Failure);
    auto& sheet = workbook.worksheet(1);
    for (const auto& [row, column] : {std::pair(0, 1), {1, 0}, {1'048'577, 1}, {1, 16'385}}) {
        EXPECT_THROW(sheet.cell(row, column), Failure);
        EXPECT_THROW(sheet.set_cell(row, column, Text()), Failure);
        EXPECT_THROW(sheet.clear(row, 1'048'577, column, 16'385), Failure);
    }
    EXPECT_EQ(sheet.clear(5, 4, 1, 1), 0);
    workbook.close(true);
    EXPECT_EQ(failure_of([&] { workbook.worksheet(1); }), "工作簿“t.xlsx”已经关闭。");
    EXPECT_NE(failure_of([&] { application->open(U"无.xlsx"); }).find("无.xlsx"), std::string::npos);
}

TEST_F(OfficeTest, random_edits_have_the_same_results_in_both_engines)
{
    const auto embedded = make_engines(Engine::Ooxml, files, printer, office);
    for (unsigned seed = 0; seed < 4; ++seed) {
        RandomSheet random(seed, false);
        const auto package = make_package(simple_parts(random.rows("<v>-99</v>")));
        for (const char* name : {"t.xlsx", "u.xlsx"}) folder.write(name, package);
        auto theirs = engines.create_spreadsheet(), ours = embedded->create_spreadsheet();
        auto& their_sheet = theirs->open(U"t.xlsx").worksheet(1);
        auto& our_sheet = ours->open(U"u.xlsx").worksheet(1);
        std::set<ooxml::Place> edited;
        for (int edit = 0; edit < 8; ++edit) {
            const auto place = random.cell();
            edited.insert({place, {place.row + 1, place.column}});
            const bool empties = random.below(4) == 0;
            const double value = random.below(9);
            for (Worksheet* sheet : {&their_sheet, &our_sheet})
                if (empties) sheet->clear(place.row, place.row + 1, place.column, place.column);
                else sheet->set_cell(place.row, place.column, value);
        }
        for (const auto place : random.dependents(edited))
            EXPECT_EQ(to_utf8(our_sheet.cell(place.row, place.column)),
                      to_utf8(their_sheet.cell(place.row, place.column)))
                << seed << ", row " << place.row << ", column " << place.column;
    }
}

INSTANTIATE_TEST_SUITE_P(Office, BothEngines, testing::Values(Engine::Ooxml, Engine::LibreOffice),
                         [](const auto& tested) { return tested.param == Engine::Ooxml ? "embedded" : "suite"; });

} // namespace tarvik::test
