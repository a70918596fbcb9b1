#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using test::TestProgram;

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

TEST(Numbers, smallest_of_three_that_is_not_0)
{
    EXPECT_EQ(min3to1(0, 7, 3), 3);
    EXPECT_EQ(min3to1(0, 0, 5), 5);
    EXPECT_EQ(min3to1(0, 0, 0), 0);
}

} // namespace
} // namespace tarvik
