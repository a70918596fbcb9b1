#include "tests/designer/designed_run.h"

namespace tarvik::test {
namespace {

using TemplateReports = DesignedRun;

TEST_F(TemplateReports, a_box_that_changes_during_the_run)
{
    boxes(form4.Text1, {{0, U"1"}, {1, U"1"}});
    boxes(form4.Text2, {{0, U"0"}, {1, U"1"}});
    store_design("automation.bin");
    marks("3159.txt", U"s1\t一班\r\ns2\t一班\r\ns3\t二班\r\n");
    command(U"An testsesame A", {Answer::OK});
    form1.query_box().set_text(U"An testsesame, edited");
    tick(form1.Timer7);
    EXPECT_TRUE(office.tasks.back().opened.ends_with(U"designerA.xlsx")) << "the template of the start";
    form1.query_box().set_text(U"something else");
    tick(form1.Timer7);
    EXPECT_EQ(office.tasks.size(), 1U) << "no command, no report";
    form1.query_box().set_text(U"An testsesame B");
    run();
    EXPECT_TRUE(office.tasks.back().opened.ends_with(U"designerB.xlsx"));
    EXPECT_TRUE(form1.window.caption().ends_with(U" ERROR !")) << "a key made no report";
}

TEST_F(TemplateReports, rows_of_another_key_stay_out)
{
    boxes(form4.Text1, {{0, U"1"}, {1, U"1"}, {28, U"2"}, {29, U"1"}});
    boxes(form4.Text2, {{0, U"1"}, {1, U"4"}, {29, U"4"}});
    store_design("automation.bin");
    marks("3159.txt", U"k1\t班\tanna\t90\r\nk1\t班\tanna\t80\r\nk2\t班\r\n");
    command(U"An testsesame A", {Answer::OK});
    run();
    EXPECT_EQ(held(U"d:\\out\\K1.xlsx"), "1,1=80 2,1=90 3,1=80 ");
    EXPECT_EQ(held(U"d:\\out\\K2.xlsx"), "2,1=90 ") << "a short line leaves its table's cells as they were";
}

TEST_F(TemplateReports, a_key_without_rows_makes_no_report_and_leaves_the_count_of_the_last_one)
{
    store_design("automation.bin");
    started.installation.write("3159.txt", encode(U"s1\t班\r\ns1\t班\tben\r\n"));
    started.open_text(U"s1\t班\r\ns9\t班\r\n");
    command(U"An testsesame A", {Answer::OK});
    run();
    EXPECT_EQ(office.tasks.size(), 1U);
    EXPECT_EQ(form1.partcount, 0);
    EXPECT_EQ(form1.recordcount, 2);
    EXPECT_EQ(form1.rowcount, 2);
    EXPECT_TRUE(form1.window.caption().ends_with(U" ERROR !"));
}

} // namespace
} // namespace tarvik::test
