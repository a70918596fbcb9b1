#include "events/events.h"
#include "platform/text/code_page.h"
#include "tests/support/recorded_office.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>

#include <new>

namespace tarvik {
namespace {

using test::TestProgram;

struct Desk {
    test::RecordedOffice office;
    TestProgram started{&office};
    Form1& form1 = started.form1();

    Desk()
    {
        start(started.program);
        started.open_text(U"head\r\na\tb\t4900000001\tc\r\na\tb\t4900000002\td\r\na\tb\t4900000001\te\r\n");
    }

    void press(char32_t key, int index = 1)
    {
        Event event{EventKind::KeyPress, form1.Text1[index]};
        event.key = key;
        dispatch(started.program, event);
        if (!event.eaten && key >= U' ') form1.Text1[index].set_text(form1.Text1[index].text() + key);
    }
};

TEST(ReportCommand, asks_lists_the_keys_and_starts_the_timer)
{
    Desk desk;
    desk.form1.query_box().set_text(U"An docket");
    desk.started.dialogs.inputs = {U"d:\\out"};
    desk.started.dialogs.replies = {Answer::OK};
    desk.press(U'\r');
    EXPECT_EQ(desk.form1.outfolder, U"d:\\out\\");
    EXPECT_TRUE(std::filesystem::is_directory(desk.started.drive_d.path() / "out"));
    const Text folder = desk.started.files.installation_folder();
    EXPECT_EQ(
        desk.started.dialogs.take_messages(),
        std::vector{
            "Tarvik 计算|欢迎使用excel自动化报表，首先请确认是否已经打开源数据报表.txt文件，并将其更名为3139.txt，"
            "并保存在此安装目录下" +
            to_utf8(folder) + "在此目录下，还应有，更名为3137.txt，3138.txt的辅助数据表文件。"});
    EXPECT_EQ(desk.form1.keycount, 2);
    EXPECT_EQ(desk.started.module1().keylist.get(0), TextView(U"4900000001"));
    EXPECT_EQ(desk.started.module1().keylist.get(1), TextView(U"4900000002"));
    EXPECT_TRUE(desk.form1.Timer3.enabled());

    // While it runs a second one is refused ahead of the question for the folder.
    desk.press(U'\r');
    EXPECT_EQ(desk.started.dialogs.take_messages().size(), 1U);
    EXPECT_EQ(desk.form1.outfolder, U"d:\\out\\");
}

TEST(ReportCommand, cancel_keeps_the_folder_and_starts_nothing)
{
    Desk desk;
    desk.form1.query_box().set_text(U"An docket");
    desk.started.dialogs.inputs = {U""}; // a cancelled box gives the default folder
    desk.started.dialogs.replies = {Answer::Cancel};
    desk.press(U'\r');
    EXPECT_EQ(desk.form1.outfolder, U"d:\\Atarvik output\\");
    EXPECT_FALSE(desk.form1.Timer3.enabled());
    EXPECT_FALSE(desk.form1.dbresult) << "nothing was scanned";
}

TEST(ReportCommand, a_folder_that_cannot_be_made_is_told_and_nothing_runs)
{
    Desk desk;
    desk.form1.query_box().set_text(U"An docket");
    desk.started.dialogs.inputs = {U"d:\\new\\below\\"};
    desk.press(U'\r');
    EXPECT_EQ(desk.started.dialogs.take_messages().size(), 1U);
    EXPECT_FALSE(desk.form1.Timer3.enabled());
}

TEST(ReportCommand, letters_An_alone_cost_the_folder_question_and_go_on_to_the_query)
{
    Desk desk;
    desk.form1.query_box().set_text(U"Angel");
    desk.started.dialogs.inputs = {U"d:\\elsewhere"};
    desk.started.dialogs.replies = {Answer::No}; // the query's own question
    desk.press(U'\r');
    EXPECT_EQ(desk.form1.outfolder, U"d:\\elsewhere\\");
    EXPECT_TRUE(desk.started.dialogs.inputs.empty());
    EXPECT_TRUE(desk.started.dialogs.replies.empty());

    desk.form1.query_box().set_text(U"an docket");
    desk.started.dialogs.replies = {Answer::No};
    desk.press(U'\r');
    EXPECT_FALSE(desk.form1.Timer3.enabled());
}

TEST(QueryBoxKeys, column_keys_are_letters_until_a_column_query_has_run)
{
    Desk desk;
    desk.form1.query_box().set_text({});
    for (const char32_t key : std::u32string_view(U"cat")) desk.press(key);
    EXPECT_EQ(desk.form1.query_box().text(), U"cat");
    EXPECT_FALSE(desk.form1.comp);
    desk.form1.dbresult = true;
    desk.form1.query_box().set_text({});
    for (const char32_t key : std::u32string_view(U"cat")) desk.press(key);
    EXPECT_EQ(desk.form1.query_box().text(), U"at");
    EXPECT_TRUE(desk.form1.comp);
    desk.form1.comp = false;
    desk.press(U'c', 2);
    EXPECT_FALSE(desk.form1.comp) << "other boxes take no commands";
}

TEST(Events, an_enter_in_the_page_box_is_no_query)
{
    Desk desk;
    desk.form1.page_box().set_text(U"3");
    desk.press(U'\r', 4);
    EXPECT_TRUE(desk.started.dialogs.messages.empty());
}

TEST(Events, closing_the_designer_brings_back_the_design_texts)
{
    Desk desk;
    Form4& form4 = desk.started.program.form4;
    desk.started.module1().designeropen = true;
    Event click{EventKind::Click, form4.Text2[30]};
    dispatch(desk.started.program, click);
    EXPECT_TRUE(form4.Text2[30].text().empty());
    Event close{EventKind::Close, form4.window};
    dispatch(desk.started.program, close);
    EXPECT_EQ(form4.Text2[30].text(), U"-1");
    EXPECT_EQ(form4.Text2[31].text(), U"0");
    EXPECT_FALSE(desk.started.module1().designeropen);
}

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
} // namespace tarvik
