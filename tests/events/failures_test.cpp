#include "events/events.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>

#include <new>

namespace tarvik::test {
namespace {

TEST(Failures, of_a_handler_are_told_and_the_program_goes_on)
{
    TestProgram started;
    Form1& form1 = started.form1();
    bool starved = true;
    started.program.listeners.property_changed = [&](const Control&, Property) {
        if (starved) throw std::bad_alloc();
        throw Failure(U"没有完成。");
    };
    Event click{EventKind::Click, form1.Option1};
    dispatch(started.program, click);
    starved = false;
    Event other{EventKind::Click, form1.Option2};
    dispatch(started.program, other);
    EXPECT_THAT(started.dialogs.take_messages(),
                testing::ElementsAre("Tarvik 计算| 请注意：\r\n内存不足，操作没有完成。", "Tarvik 计算|没有完成。"));
    started.program.listeners.property_changed = nullptr;
    form1.resultpos = 3;
    dispatch(started.program, click);
    EXPECT_TRUE(form1.Option1.value());
    EXPECT_EQ(form1.resultpos, 0);
}

} // namespace
} // namespace tarvik::test
