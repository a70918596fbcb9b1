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

class LiveComparison : public DesignedRun {
protected:
    void design_of_two_cells()
    {
        boxes(form4.Text1, {{0, U"1"}, {1, U"1"}, {28, U"5"}, {29, U"2"}});
        boxes(form4.Text2, {{0, U"0"}, {1, U"3"}, {29, U"4"}});
        store_design("automation3.bin");
        store_design("automation2.bin");
        marks("3160.txt", U"A1\t班\tanna\t90\r\nb2\t班\tben\t80\r\nc3\t班\tcarl\t70\r\n");
    }
};

TEST_F(LiveComparison, cancel_at_the_choice_ends_the_run)
{
    design_of_two_cells();
    command(U"An tomation", {Answer::OK});
    (void)told();
    tick(form1.Timer8);
    expect_released();
    EXPECT_EQ(form1.batchcursor, -1);
    EXPECT_TRUE(told().empty());
    EXPECT_FALSE(form1.folderchosen);
}

TEST_F(LiveComparison, one_pass_takes_the_key_at_the_cursor_and_keeps_the_folder)
{
    design_of_two_cells();
    source_file("Report B2.xlsx"); // holds the key, in whatever case
    source_file("a1.xlsx");
    started.dialogs.files = {U"d:\\src\\Report B2.xlsx"};
    command(U"An Sesame Open");
    EXPECT_EQ(told().size(), 1U);
    EXPECT_TRUE(office.tasks.empty()) << "there are no keys yet";
    program.module1.keylist.set(0, U"b2");
    command(U"An Sesame Open"); // no second dialog
    EXPECT_EQ(started.dialogs.filters.size(), 1U);
    EXPECT_EQ(held(U"d:\\out\\OK-Report B2.xlsx"), "1,1=ANNA 5,2=90 6,2=80 7,2=70 ");
    EXPECT_EQ(held(U"d:\\out\\OK-a1.xlsx"), "(no file)");
    EXPECT_TRUE(TextView(form1.window.caption()).contains(U"   →   "));
    for (const int cursor : {-1, 5, 1'000'000}) {
        form1.batchcursor = cursor;
        office.tasks.clear();
        command(U"An Sesame Open");
        EXPECT_TRUE(office.tasks.empty()) << cursor;
    }
    form1.batchcursor = 0;
    form4.Text3.set_text(U"nobody");
    store_design("automation2.bin");
    command(U"An Sesame Open");
    EXPECT_TRUE(office.tasks.empty()) << "no rows, nothing to write";
    (void)told();
    form1.folderchosen = false;
    command(U"An Sesame Open"); // cancelled
    EXPECT_EQ(form1.batchcursor, 0);
    EXPECT_EQ(told().size(), 1U);
}

TEST_F(LiveComparison, a_run_that_ends_early_tells_what_it_passed_over)
{
    design_of_two_cells();
    source_file("a1.xlsx");
    source_file("c3.xlsx");
    office.failing = U"a1.xlsx";
    for (const bool stops : {true, false}) {
        started.dialogs.files = {U"d:\\src\\a1.xlsx"};
        command(U"An tomation", {Answer::OK});
        tick(form1.Timer8);
        (void)told();
        (stops ? program.run.stop_wished : form1.comp) = true;
        run();
        const auto messages = told();
        ASSERT_EQ(messages.size(), 1U);
        EXPECT_NE(messages[0].find(U"a1.xlsx"), Text::npos);
        EXPECT_EQ(messages[0].find(U"comp") == Text::npos, stops);
        expect_released();
    }
}

} // namespace
} // namespace tarvik::test
