#include "engines/spreadsheets/sheet_look.h"
#include "engines/spreadsheets/workbook_model.h"
#include "tests/engines/spreadsheets/workbook_parts.h"

#include <gtest/gtest.h>

/// Workbooks in which little is written and much is meant. Each would take minutes or gigabytes if what is led to many
/// times were read each time.
namespace tarvik::test {

namespace {

using namespace ooxml;

std::shared_ptr<const Package> packed(const Parts& parts)
{
    return std::make_shared<const Package>(make_package(parts));
}

const std::string sheet1 = "xl/worksheets/sheet1.xml";

} // namespace

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
