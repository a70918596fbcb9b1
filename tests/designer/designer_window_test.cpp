#include "designer/design/design.h"
#include "tests/support/report_desk.h"

namespace tarvik::test {
namespace {

class Designer : public ReportDesk {
protected:
    void press(Control& button, std::initializer_list<Answer> replies)
    {
        started.dialogs.replies = replies;
        happen(EventKind::Click, button);
        EXPECT_TRUE(started.dialogs.replies.empty()) << "a question did not come";
    }

    void save(Answer file) { press(form4.Command1, {Answer::OK, file}); }
};

TEST_F(Designer, many_empty_boxes_are_counted_and_an_asterisk_is_warned_of)
{
    for (TextBox* box : form4.design_boxes()) box->set_text({});
    form4.Text4.set_text(U"1*2");
    save(Answer::Yes);
    EXPECT_TRUE(told().at(0).ends_with(U"等100个框"));
    EXPECT_TRUE(started.installation.read("automation.bin").ends_with("*0*1*2\r\n"));
    EXPECT_NE(program.notice.find(U"“*”"), Text::npos) << "no box says it, the status line does";
}

TEST_F(Designer, a_file_that_cannot_be_written_or_read_is_reported)
{
    form4.Text1[28].set_text(U"12");
    std::filesystem::create_directory(started.installation.path() / "automation.bin");
    save(Answer::Yes);
    EXPECT_NE(told().at(0).find(U"automation.bin"), Text::npos);
    EXPECT_TRUE(form4.holds_typed_text());
    press(form4.Command2, {Answer::Yes});
    EXPECT_TRUE(told().empty()) << "there is no such file";
    EXPECT_EQ(form4.Text1[28].text(), U"12");
}

TEST_F(Designer, closed_it_comes_back_with_the_texts_of_the_design)
{
    program.module1.designeropen = true;
    form4.window.set_visible(true);
    press(form4.Command1, {Answer::Cancel});
    form4.Text1[3].set_text(U"7");
    EXPECT_TRUE(form4.holds_typed_text());
    happen(EventKind::Close, form4.window);
    EXPECT_TRUE(started.dialogs.messages.size() == 1) << "closing asks nothing";
    EXPECT_FALSE(program.module1.designeropen || form4.window.visible());
    EXPECT_TRUE(form4.Label1.visible() && form4.Label5.visible());
    EXPECT_EQ(form4.Text1[3].text(), U"0");
    EXPECT_EQ(form4.Text2[28].text(), U"-1");
    EXPECT_EQ(form4.Text3.text(), U"query");
    EXPECT_FALSE(form4.holds_typed_text());
    form4.Text1[3].set_text(U"7");
    save(Answer::Yes);
    EXPECT_FALSE(form4.holds_typed_text()) << "it was saved";
    form4.Text2[30].set_text({});
    EXPECT_FALSE(form4.holds_typed_text()) << "nothing typed";
}

TEST_F(Designer, its_boxes_are_none_of_the_main_window)
{
    start(program);
    program.form1.resultpos = 3;
    form4.Text1[1].set_text(U"5");
    EXPECT_EQ(program.form1.resultpos, 3) << "the query's results are forgotten";
    program.form1.query_box().set_text(U"another");
    EXPECT_EQ(program.form1.resultpos, 0);
}

} // namespace
} // namespace tarvik::test
