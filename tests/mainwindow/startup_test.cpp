#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using test::TestProgram;

TEST(Startup, reaches_the_window_with_nothing_in_the_installation_folder)
{
    TestProgram started;
    Form1& form1 = started.form1();
    EXPECT_TRUE(started.dialogs.messages.empty());
    EXPECT_TRUE(form1.window.visible());
    EXPECT_TRUE(form1.formready);
    EXPECT_TRUE(form1.batchgate);
    EXPECT_TRUE(form1.RichTextBox2.empty());
    EXPECT_EQ(started.program.form4.Text2[49].text(), U"-1");
    EXPECT_TRUE(std::filesystem::is_directory(started.drive_d.path() / "Atarvik output"));
    for (const Control* hidden : {&form1.Frame1, &form1.Frame2, &form1.Frame3, &form1.Frame4, &form1.Command3})
        EXPECT_FALSE(hidden->visible());
}

TEST(Startup, keeps_which_objects_of_its_file_accesses_stand)
{
    TestProgram started;
    EXPECT_TRUE(started.form1().fso) << "the folder of results was made";
    EXPECT_FALSE(started.form1().textstream) << "there is no opening screen that could be read";
    started.installation.write("coclus.txt", "Tarvik");
    Form_Load(started.program);
    EXPECT_TRUE(started.form1().textstream);
}

// The reference goes step by step.
double grown_width(double screen, double factor)
{
    double width = 0;
    for (double w = 0; w <= screen * 0.5; ++w) {
        width = w;
        if (w - 732 - 200 - 960 - 200 > 10000 * factor) break;
    }
    return width;
}

TEST(Startup, opening_grows_the_window_as_far_as_the_step_by_step_rule)
{
    for (const double screen : {0.0, 3000.0, 9000.0, 15360.0, 17000.0, 17001.0, 20480.0, 28800.0, 57600.0}) {
        TestProgram started;
        Form1& form1 = started.form1();
        const double base = screen > 17000 ? 12960 : 8848;
        const double factor = screen > 17000 ? 1.1 : 0.82;
        const double before = form1.Command6.left();
        opening_animation(started.program, screen);
        const double k = factor * grown_width(screen, factor) / base;
        EXPECT_DOUBLE_EQ(form1.Command6.left(), before * k) << screen;
        EXPECT_DOUBLE_EQ(form1.window.width(), form1.Command6.left() + form1.Command6.width() + 200) << screen;
        EXPECT_DOUBLE_EQ(form1.Command2[5].left(), form1.Command2[4].left());
    }
}

TEST(Modes, second_press_brings_back_reading_and_the_defaults)
{
    TestProgram started;
    Form1& form1 = started.form1();
    select_option(form1, form1.Option2);
    form1.comp = form1.notcap = form1.dbresult = form1.scanfolderset = true;
    form1.showdata = false;
    form1.resultcount = 2;
    for (std::size_t i = 0; i <= 3; ++i) {
        started.module1().filehits.set(i, U"x");
        started.module1().hits.set(i, U"x");
    }
    Command6_Click(started.program);
    EXPECT_TRUE(form1.Command1[0].visible() && form1.Command1[4].visible());
    EXPECT_TRUE(form1.Option2.value()) << "the first press resets nothing";
    Command6_Click(started.program);
    EXPECT_TRUE(no_option_selected(form1));
    EXPECT_FALSE(form1.comp || form1.notcap || form1.dbresult || form1.scanfolderset);
    EXPECT_TRUE(form1.showdata);
    EXPECT_EQ(form1.resultcount, 2);
    EXPECT_TRUE(started.module1().filehits.get(2).empty());
    EXPECT_EQ(started.module1().filehits.get(3), TextView(U"x")) << "only up to resultcount";
    EXPECT_EQ(started.module1().hits.get(0), TextView(U"x")) << "the plain query keeps its results";
}

TEST(PaneMovement, shrinks_to_150_and_stops_by_itself_or_at_any_release)
{
    TestProgram started;
    Form1& form1 = started.form1();
    const double column = form1.page_size_box().left();
    Command2_MouseDown(started.program, 3);
    ASSERT_TRUE(form1.Timer1[0].enabled());
    int ticks = 0;
    for (; form1.Timer1[0].enabled() && ticks < 1000; ++ticks) Timer1_Timer(started.program, 0);
    EXPECT_DOUBLE_EQ(form1.RichTextBox1.width(), 150);
    EXPECT_DOUBLE_EQ(form1.page_size_box().left(), column - 72 * ticks);
    Command2_MouseDown(started.program, 4);
    Command2_MouseUp(started.program, 1);
    EXPECT_TRUE(form1.Timer1[2].enabled()) << "a page button ends no movement";
    Command2_MouseUp(started.program, 5);
    EXPECT_FALSE(form1.Timer1[2].enabled());
}

TEST(Shutdown, asks_once_and_keeps_everything_at_no)
{
    TestProgram started;
    started.dialogs.replies = {Answer::No, Answer::Yes};
    EXPECT_FALSE(Form_QueryUnload(started.program));
    EXPECT_TRUE(started.form1().window.visible());
    EXPECT_EQ(started.form1().answer, 7);
    EXPECT_TRUE(Form_QueryUnload(started.program));
    EXPECT_TRUE(Form_QueryUnload(started.program));
    EXPECT_EQ(started.dialogs.take_messages().size(), 2U);
}

} // namespace
} // namespace tarvik
