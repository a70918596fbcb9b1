#include "lists/lists.h"

#include "columns/column_query.h"
#include "columns/columns.h"
#include "tests/support/recorded_office.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

TEST(SheetStatistics, go_into_the_workbook_in_upper_case)
{
    RecordedOffice office;
    TestProgram desk(&office);
    int row = 5;
    statistics(desk.program, 1, row, 3, 2);
    EXPECT_TRUE(office.tasks.empty());
    desk.open_text(U"ab\t|\r\nab\tx|\r\n1\t|\r\n");
    query1(desk.program, U"|");
    devision1(desk.program);
    statistics(desk.program, 1, row, 3, 2);
    ASSERT_EQ(office.of(U"z1.xlsx").size(), 1U);
    const RecordedTask task = office.of(U"z1.xlsx").front();
    const Cells cells{{{5, 3}, Text(U"AB")}, {{5, 5}, Text(U"2")}, {{6, 3}, Text(U"1")}, {{6, 5}, Text(U"1")}};
    EXPECT_EQ(task.cells, cells);
    EXPECT_TRUE(task.saved && task.quit && !task.visible);
    EXPECT_EQ(std::make_pair(row, desk.form1().sheetrow), std::make_pair(7, 7));
    EXPECT_EQ(to_utf8(desk.form1().RichTextBox3.text()), "\tab\t\t\t2\t\r\n\t1\t\t\t1\t\r\n\t合计:\t\t\t3\t\r\n");
    office.failing = U"z1.xlsx";
    EXPECT_THROW(statistics(desk.program, 1, row, 3, 2), Failure);
    EXPECT_EQ(desk.form1().xlApp, nullptr);
    EXPECT_EQ(row, 7);
}

} // namespace
} // namespace tarvik::test
