#include "runs/batch_runner.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

constexpr SheetFamily family{
    .timer = &Form1::Timer3,
    .scan =
        [](Program& program, TextView key) {
            if (key == TextView(U"broken")) throw Failure(U"坏文件");
            program.form1.partcount = key == TextView(U"none") ? 0 : 2;
        },
    .prepare = [](Program&) {},
    .sheet =
        [](Program& program) {
            program.form1.batchgate = false;
            close_sheet(program);
        },
};

void batch_tick(Program& program)
{
    tarvik::batch_tick(program, family);
}

void begin(TestProgram& started, std::initializer_list<TextView> keys)
{
    Form1& form1 = started.form1();
    form1.keycount = 0;
    for (const TextView key : keys) started.module1().keylist.set(static_cast<std::size_t>(form1.keycount++), key);
    started.module1().keylist.set(keys.size(), {});
    start_run(started.program, form1.Timer3);
}

TEST(BatchRunner, tells_every_sheet_in_the_caption_and_ends_in_ok)
{
    TestProgram started;
    Form1& form1 = started.form1();
    begin(started, {U"a", U"b"});
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算 ");
    EXPECT_EQ(form1.runtitle, U"Tarvik 计算  9:05:07←start:");
    started.clock.time.second = 12;
    batch_tick(started.program);
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算  9:05:07←start: 0 →9:05:12→：5 秒/张。   →   1");
    EXPECT_EQ(form1.recordcount, 2);
    started.clock.time.second = 16;
    batch_tick(started.program);
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算  9:05:07←start: 1 →9:05:16→：4 秒/张。   →   0");
    batch_tick(started.program); // the empty key behind the last one
    EXPECT_TRUE(form1.Timer3.enabled());
    batch_tick(started.program);
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算  9:05:07←start: 2   Complete 9:05:16→：9 秒。→：3 秒/张。 OK !");
    EXPECT_FALSE(form1.Timer3.enabled());
    EXPECT_EQ(form1.sheetno, 1);
    EXPECT_EQ(form1.batchcursor, -1);
}

TEST(BatchRunner, a_closed_gate_lets_the_tick_pass)
{
    TestProgram started;
    begin(started, {U"a"});
    started.form1().batchgate = false;
    batch_tick(started.program);
    EXPECT_EQ(started.form1().batchcursor, -1);
}

TEST(BatchRunner, a_failure_stops_the_run_and_leaves_no_ending)
{
    TestProgram started;
    Form1& form1 = started.form1();
    begin(started, {U"a", U"broken", U"c"});
    batch_tick(started.program);
    const Text caption = form1.window.caption();
    EXPECT_THROW(batch_tick(started.program), Failure);
    EXPECT_FALSE(run_in_progress(form1));
    EXPECT_TRUE(form1.batchgate);
    EXPECT_EQ(form1.batchcursor, -1);
    EXPECT_EQ(form1.sheetno, 1);
    EXPECT_EQ(form1.window.caption(), caption);
}

TEST(BatchRunner, stops_before_the_next_sheet_when_it_is_wished_or_the_other_table_is_chosen)
{
    TestProgram started;
    Form1& form1 = started.form1();
    begin(started, {U"a", U"b", U"c"});
    batch_tick(started.program);
    started.program.run.stop_wished = true;
    batch_tick(started.program);
    EXPECT_FALSE(run_in_progress(form1));
    EXPECT_FALSE(started.program.run.stop_wished) << "the next run is another";
    EXPECT_TRUE(started.program.run.stopped);
    begin(started, {U"a", U"none"});
    batch_tick(started.program);
    batch_tick(started.program);
    ASSERT_EQ(started.program.run.passed.size(), 1U);
    EXPECT_EQ(started.program.run.passed[0].key, U"none");
    form1.comp = true;
    batch_tick(started.program);
    EXPECT_TRUE(form1.Timer3.enabled()) << "no key is left that would be scanned";
    batch_tick(started.program);
    EXPECT_FALSE(started.program.run.stopped);
    EXPECT_TRUE(form1.window.caption().ends_with(U" ERROR !"));
    begin(started, {U"a"});
    EXPECT_THROW(batch_tick(started.program), Failure);
    EXPECT_FALSE(run_in_progress(form1));
}

TEST(BatchRunner, a_run_across_midnight_counts_on)
{
    TestProgram started;
    started.clock.time = {2024, 2, 29, 23, 59, 58};
    begin(started, {});
    batch_tick(started.program);
    started.clock.time = {2024, 3, 1, 0, 0, 3};
    batch_tick(started.program);
    EXPECT_NE(started.form1().window.caption().find(U"0:00:03→：5 秒。→：5 秒/张。"), Text::npos);

    started.clock.time = {2024, 2, 28, 12, 0, 0};
    begin(started, {});
    batch_tick(started.program);
    started.clock.time = {2024, 3, 1, 11, 59, 59};
    batch_tick(started.program);
    EXPECT_NE(started.form1().window.caption().find(U"→：172799 秒。"), Text::npos) << "two days but a second";
}

} // namespace
} // namespace tarvik::test
