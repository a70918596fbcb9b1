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

class BatchRunner : public testing::Test {
protected:
    TestProgram started;
    Form1& form1 = started.form1();

    void tick() { batch_tick(started.program, family); }
    void begin(std::initializer_list<TextView> keys)
    {
        form1.keycount = 0;
        for (const TextView key : keys) started.module1().keylist.set(static_cast<std::size_t>(form1.keycount++), key);
        started.module1().keylist.set(keys.size(), {});
        start_run(started.program, form1.Timer3);
    }
};

TEST_F(BatchRunner, tells_every_sheet_in_the_caption_and_ends_in_ok)
{
    begin({U"a", U"b"});
    form1.batchgate = false;
    tick();
    EXPECT_EQ(form1.batchcursor, -1) << "a closed gate lets the tick pass";
    form1.batchgate = true;
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算 ");
    EXPECT_EQ(form1.runtitle, U"Tarvik 计算  9:05:07←start:");
    started.clock.time.second = 12;
    tick();
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算  9:05:07←start: 0 →9:05:12→：5 秒/张。   →   1");
    EXPECT_EQ(form1.recordcount, 2);
    started.clock.time.second = 16;
    tick();
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算  9:05:07←start: 1 →9:05:16→：4 秒/张。   →   0");
    tick(); // the empty key behind the last one
    EXPECT_TRUE(form1.Timer3.enabled());
    tick();
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算  9:05:07←start: 2   Complete 9:05:16→：9 秒。→：3 秒/张。 OK !");
    EXPECT_FALSE(form1.Timer3.enabled());
    EXPECT_EQ(form1.sheetno, 1);
    EXPECT_EQ(form1.batchcursor, -1);
}

TEST_F(BatchRunner, a_failure_stops_the_run_and_leaves_no_ending)
{
    begin({U"a", U"broken", U"c"});
    tick();
    const Text caption = form1.window.caption();
    EXPECT_THROW(tick(), Failure);
    EXPECT_FALSE(run_in_progress(form1));
    EXPECT_TRUE(form1.batchgate);
    EXPECT_EQ(form1.batchcursor, -1);
    EXPECT_EQ(form1.sheetno, 1);
    EXPECT_EQ(form1.window.caption(), caption);
}

TEST_F(BatchRunner, stops_before_the_next_sheet_when_it_is_wished_or_the_other_table_is_chosen)
{
    begin({U"a", U"b", U"c"});
    tick();
    started.program.run.stop_wished = true;
    tick();
    EXPECT_FALSE(run_in_progress(form1));
    EXPECT_FALSE(started.program.run.stop_wished) << "the next run is another";
    EXPECT_TRUE(started.program.run.stopped);
    begin({U"a", U"none"});
    tick();
    tick();
    ASSERT_EQ(started.program.run.passed.size(), 1U);
    EXPECT_EQ(started.program.run.passed[0].key, U"none");
    form1.comp = true;
    tick();
    EXPECT_TRUE(form1.Timer3.enabled()) << "no key is left that would be scanned";
    tick();
    EXPECT_FALSE(started.program.run.stopped);
    EXPECT_TRUE(form1.window.caption().ends_with(U" ERROR !"));
    begin({U"a"});
    EXPECT_THROW(tick(), Failure);
    EXPECT_FALSE(run_in_progress(form1));
}

TEST_F(BatchRunner, a_run_across_midnight_counts_on)
{
    started.clock.time = {2024, 2, 29, 23, 59, 58};
    begin({});
    tick();
    started.clock.time = {2024, 3, 1, 0, 0, 3};
    tick();
    EXPECT_NE(form1.window.caption().find(U"0:00:03→：5 秒。→：5 秒/张。"), Text::npos);

    started.clock.time = {2024, 2, 28, 12, 0, 0};
    begin({});
    tick();
    started.clock.time = {2024, 3, 1, 11, 59, 59};
    tick();
    EXPECT_NE(form1.window.caption().find(U"→：172799 秒。"), Text::npos) << "two days but a second";
}

} // namespace
} // namespace tarvik::test
