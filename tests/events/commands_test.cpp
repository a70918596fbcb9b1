#include "tests/support/desk.h"
#include "tests/support/recorded_office.h"

#include <gmock/gmock.h>

#include <new>

namespace tarvik::test {
namespace {

class Events : public testing::Test, protected Desk<RecordedOffice> {
protected:
    Events()
    {
        start(program);
        started.open_text(U"head\r\na\tb\t4900000001\tc\r\na\tb\t4900000002\td\r\na\tb\t4900000001\te\r\n");
    }

    void press(char32_t key, int index = 1)
    {
        Event event{EventKind::KeyPress, form1.Text1[index]};
        event.key = key;
        dispatch(program, event);
        if (!event.eaten && key >= U' ') form1.Text1[index].set_text(form1.Text1[index].text() + key);
    }
};

TEST_F(Events, letters_An_alone_cost_the_folder_question_and_go_on_to_the_query)
{
    typed_folder = U"d:\\elsewhere";
    press_enter(U"Angel", {Answer::No}); // the query's own question
    EXPECT_EQ(form1.outfolder, U"d:\\elsewhere\\");
    EXPECT_TRUE(started.dialogs.inputs.empty());
    EXPECT_TRUE(started.dialogs.replies.empty());
    press_enter(U"an docket", {Answer::No});
    EXPECT_FALSE(form1.Timer3.enabled());
}

TEST_F(Events, whose_handlers_fail_are_reported_and_the_program_goes_on)
{
    bool starved = true;
    program.listeners.property_changed = [&](const Control&, Property) {
        if (starved) throw std::bad_alloc();
        throw Failure(U"没有完成。");
    };
    happen(EventKind::Click, form1.Option1);
    starved = false;
    happen(EventKind::Click, form1.Option2);
    EXPECT_THAT(started.dialogs.take_messages(),
                testing::ElementsAre("Tarvik 计算| 请注意：\r\n内存不足，操作没有完成。", "Tarvik 计算|没有完成。"));
    program.listeners.property_changed = nullptr;
    form1.resultpos = 3;
    happen(EventKind::Click, form1.Option1);
    EXPECT_TRUE(form1.Option1.value());
    EXPECT_EQ(form1.resultpos, 0);
}

} // namespace
} // namespace tarvik::test
