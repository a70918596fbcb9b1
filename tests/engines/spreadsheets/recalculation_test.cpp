#include "tests/engines/spreadsheets/random_sheet.h"
#include "tests/engines/spreadsheets/workbook_file.h"

#include "engines/packages/damage.h"
#include "engines/spreadsheets/workbook_model.h"

#include <gmock/gmock.h>

namespace tarvik::test {

namespace {

const std::string sheet1 = "xl/worksheets/sheet1.xml";

std::string formula(const std::string& place, const std::string& text, const std::string& result = {})
{
    return "<c r=\"" + place + "\"><f>" + text + "</f>" + (result.empty() ? "" : "<v>" + result + "</v>") + "</c>";
}

// The other sheet's formula has a result, which stays as long as nobody writes what it reads.
std::vector<std::string> failed_in_first_sheet(ooxml::WorkbookModel& model)
{
    std::vector<std::string> places;
    for (const auto& [number, reason] : model.recalculation().failed())
        if (const auto& formula = model.recalculation().index()[number]; formula.sheet == 1)
            places.push_back(ooxml::place_name(formula.place()) + " " + reason);
    return places;
}

} // namespace

TEST(Recalculation, an_empty_result_is_empty_and_blanking_leaves_its_formula)
{
    WorkbookFile file(simple_parts("<row r=\"13\"><c r=\"A13\"><v>1</v></c>" +
                                   formula("B13", "IF(A13=\"\",\"\",\"SN\"&amp;A13)") + "</row>"));
    auto& sheet = file.open().worksheet(1);
    EXPECT_EQ(sheet.cell(13, 2), U"SN1");
    sheet.set_cell(13, 1, Text());
    EXPECT_TRUE(sheet.is_empty(13, 2));
    EXPECT_EQ(sheet.clear(13, 20, 1, 9), 0);
    sheet.set_cell(13, 1, Text(U"7"));
    EXPECT_EQ(sheet.cell(13, 2), U"SN7");
}

TEST(Recalculation, what_nobody_can_calculate_is_a_failure_that_names_it)
{
    WorkbookFile file(simple_parts("<row r=\"1\">" + formula("A1", "NOSUCH(B1)", "5") + formula("C1", "A1+1", "6") +
                                   formula("D1", "E1", "0") + formula("E1", "D1", "0") + "</row>"));
    auto& sheet = file.open().worksheet(1);
    EXPECT_EQ(sheet.cell(1, 3), U"6"); // nothing is written yet
    sheet.set_cell(1, 2, 2.0);
    const auto failure = failure_of([&] { static_cast<void>(sheet.is_empty(1, 3)); });
    EXPECT_THAT(failure,
                testing::AllOf(testing::HasSubstr("t.xlsx"), testing::HasSubstr("C1"), testing::HasSubstr("NOSUCH")));
    EXPECT_EQ(sheet.cell(1, 4), U"0"); // untouched, though it waits for itself
}

TEST(Recalculation, texts_become_numbers_where_numbers_are_asked_for)
{
    auto parts =
        simple_parts("<row r=\"1\"><c r=\"A1\" s=\"1\"/><c r=\"B1\" s=\"3\"/><c r=\"C1\" s=\"2\"/>" +
                     formula("E1", "AVERAGE(D1:D9,B1)", "0") + "</row><row r=\"9\"><c r=\"I9\" s=\"4\"/></row>");
    edit_part(parts, "xl/styles.xml", "<numFmts count=\"1\">",
              "<numFmts><numFmt numFmtId=\"165\" formatCode=\"General\"/>");
    edit_part(parts, "xl/styles.xml", "</cellXfs>", "<xf numFmtId=\"165\"/></cellXfs>");
    WorkbookFile file(parts);
    auto& sheet = file.open().worksheet(1);
    for (int column = 1; column <= 3; ++column) sheet.set_cell(1, column, Text(U"90"));
    sheet.set_cell(1, 4, Text(U"80"));
    sheet.set_cell(2, 4, Text(U"0012"));
    sheet.set_cell(9, 9, Text(U"90"));
    EXPECT_EQ(sheet.cell(1, 5), U"80"); // a text in a range counts for nothing
    std::string kinds;
    for (const auto& [row, column] : {std::pair(1, 1), {1, 2}, {1, 3}, {1, 4}, {2, 4}, {9, 9}})
        kinds += std::holds_alternative<double>(sheet.value(row, column)) ? 'n' : 't';
    EXPECT_EQ(kinds, "nttntt");
}

TEST(Recalculation, texts_for_one_merged_range_lose_nothing)
{
    WorkbookFile file(simple_parts("<row r=\"2\"><c r=\"B2\" t=\"s\"><v>0</v></c></row>",
                                   "<mergeCells><mergeCell ref=\"B2:D3\"/><mergeCell ref=\"C5:E6\"/></mergeCells>"));
    auto& workbook = file.open();
    auto& sheet = workbook.worksheet(1);
    sheet.set_cell(6, 5, 1.0);
    sheet.set_cell(5, 4, Text());
    EXPECT_EQ(sheet.cell(5, 3) + sheet.cell(6, 5), U"1");
    sheet.set_cell(5, 3, Text());
    EXPECT_TRUE(sheet.is_empty(5, 3));
    sheet.set_cell(2, 3, Text(U"一"));
    EXPECT_EQ(sheet.cell(2, 2), U"一");
    sheet.set_cell(3, 4, Text(U"二"));
    EXPECT_EQ(to_utf8(sheet.cell(2, 2) + sheet.cell(2, 3) + sheet.cell(3, 4)), "客户一二");
    workbook.close(true);
    EXPECT_EQ(part_of(file.saved(), sheet1).find("B2:D3"), std::string::npos);
}

TEST(Recalculation, agrees_with_a_calculation_of_everything)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        RandomSheet random(seed, seed % 2 == 1);
        const auto rows = random.rows("");
        const auto package = std::make_shared<const ooxml::Package>(make_package(simple_parts(rows)));
        ooxml::WorkbookModel touched(package), whole(package);
        for (int write = 0; write < 10; ++write) {
            const auto at = random.cell();
            const double value = random.below(9);
            touched.sheet(1).write(at, value);
            whole.sheet(1).write(at, value);
            if (random.below(2) == 0) touched.recalculation().update_all();
        }
        whole.recalculation().forget_results();
        whole.recalculation().update_all();
        touched.recalculation().update_all();
        EXPECT_EQ(failed_in_first_sheet(touched), failed_in_first_sheet(whole)) << rows;
        EXPECT_EQ(touched.sheet(1).values({{1, 1}, {12, 6}}), whole.sheet(1).values({{1, 1}, {12, 6}})) << rows;
    }
}

TEST(Recalculation, a_result_stays_to_the_byte_unless_it_depends_on_a_write)
{
    const std::string stored = "</f><v>-99.500</v>";
    for (unsigned seed = 0; seed < 60; ++seed) {
        RandomSheet random(seed, seed % 2 == 1);
        WorkbookFile file(simple_parts(random.rows(stored.substr(4))));
        auto& workbook = file.open();
        std::set<ooxml::Place> written;
        for (int count = random.below(4); count >= 0; --count) {
            const auto at = random.cell();
            written.insert(at);
            workbook.worksheet(1).set_cell(at.row, at.column, static_cast<double>(random.below(9)));
        }
        workbook.close(true);
        const auto saved = part_of(file.saved(), sheet1);
        const auto dependents = random.dependents(written);
        for (const auto& [place, named] : random.reads) {
            if (written.contains(place)) continue;
            const auto begin = saved.find("<c r=\"" + ooxml::place_name(place) + "\"");
            const auto cell = saved.substr(begin, saved.find("</c>", begin) - begin);
            EXPECT_EQ(cell.ends_with(stored), !dependents.contains(place)) << seed << " " << cell;
        }
    }
}

TEST(Recalculation, a_long_chain_takes_no_stack_and_every_cell_is_met_once)
{
    constexpr int length = 100'000;
    std::string rows;
    for (int row = 1; row < length; ++row) {
        const auto name = std::to_string(row);
        rows += "<row r=\"" + name + "\">" + formula("A" + name, "A" + std::to_string(row + 1) + "+1", "0") + "</row>";
    }
    ooxml::WorkbookModel model(std::make_shared<const ooxml::Package>(make_package(simple_parts(rows))));
    model.sheet(1).write({length, 1}, 5.0);
    EXPECT_EQ(model.sheet(1).text({1, 1}), number_text(length + 4));
}

} // namespace tarvik::test
