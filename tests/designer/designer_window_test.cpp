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

    std::vector<Text> boxes()
    {
        std::vector<Text> texts;
        for (const TextBox* box : form4.design_boxes()) texts.push_back(box->text());
        return texts;
    }
};

TEST_F(Designer, a_design_saved_right_after_the_start_reloads_unchanged)
{
    save(Answer::Yes);
    std::string expected = "query";
    for (int i = 0; i < 100; ++i) expected += "*-1";
    EXPECT_EQ(started.installation.read("automation.bin"), expected + "*1\r\n");
    EXPECT_TRUE(told().empty());

    std::vector<Text> before = boxes();
    for (TextBox* box : form4.design_boxes()) box->set_text(U"typed");
    press(form4.Command2, {Answer::Yes});
    before.back() = U"1\r\n";
    EXPECT_EQ(boxes(), before);
    save(Answer::Yes); // every box as it is, with the line end that came with the file
    EXPECT_EQ(started.installation.read("automation.bin"), expected + "*1\r\n\r\n");
}

TEST_F(Designer, the_buttons_of_both_questions_are_the_three_files)
{
    form4.Text3.set_text(U"一班");
    int number = 0;
    for (const auto& [answer, file] :
         {std::pair{Answer::Yes, "automation.bin"}, std::pair{Answer::No, "automation3.bin"},
          std::pair{Answer::Cancel, "automation2.bin"}}) {
        form4.Text1[0].set_text(number_text(++number));
        save(answer);
        EXPECT_TRUE(started.installation.read(file).starts_with("\xD2\xBB\xB0\xE0*" + std::to_string(number) + "*-1*"));
    }
    press(form4.Command2, {Answer::Yes});
    EXPECT_EQ(form4.Text1[0].text(), U"1");
    press(form4.Command2, {Answer::Cancel});
    EXPECT_EQ(form4.Text1[0].text(), U"3");
    press(form4.Command2, {Answer::No});
    EXPECT_EQ(form4.Text1[0].text(), U"2");
    EXPECT_EQ(form4.Text3.text(), U"一班");
}

TEST_F(Designer, cancel_at_the_first_question_hides_the_help_and_writes_nothing)
{
    press(form4.Command1, {Answer::Cancel});
    EXPECT_FALSE(form4.Label1.visible() || form4.Label5.visible());
    EXPECT_FALSE(std::filesystem::exists(started.installation.path() / "automation2.bin"));
    save(Answer::Cancel);
    EXPECT_TRUE(form4.Label1.visible() && form4.Label5.visible());
    EXPECT_TRUE(std::filesystem::exists(started.installation.path() / "automation2.bin"));
}

TEST_F(Designer, empty_boxes_are_stored_as_0_and_named_as_the_user_sees_them)
{
    for (TextBox* box : {&form4.Text1[5], &form4.Text2[4], &form4.Text2[49], &form4.Text4, &form4.Text3})
        box->set_text({});
    save(Answer::Yes);
    EXPECT_EQ(told(), std::vector<Text>{U" 请注意：\r\n下列框没有填写，按“0”保存：\r\n静态 第3行 第2框"
                                        U"\r\n静态 第3行 第3框\r\n动态 第11行 第4框\r\n“1”框"});
    const std::vector<Text> shown = boxes();
    EXPECT_EQ(shown[6], U"0");
    press(form4.Command2, {Answer::Yes});
    std::vector<Text> loaded = boxes();
    loaded.back() = U"0"; // without its line end
    EXPECT_EQ(loaded, shown);

    for (TextBox* box : form4.design_boxes()) box->set_text({});
    save(Answer::Yes);
    EXPECT_TRUE(told().at(0).ends_with(U"等101个框"));
}

TEST_F(Designer, an_asterisk_is_stored_as_it_is_and_ends_its_field_when_it_is_read)
{
    form4.Text4.set_text(U"1*2");
    save(Answer::Yes);
    EXPECT_TRUE(started.installation.read("automation.bin").ends_with("*-1*1*2\r\n"));
    EXPECT_TRUE(told().empty());
    EXPECT_FALSE(program.notice.empty()) << "no box says it, the status line does";
    press(form4.Command2, {Answer::Yes});
    EXPECT_EQ(form4.Text4.text(), U"2\r\n");
    EXPECT_EQ(form4.Text2[49].text(), U"-1");

    form4.Text1[28].set_text(U"7*8");
    save(Answer::Yes);
    press(form4.Command2, {Answer::Yes});
    EXPECT_EQ(form4.Text1[28].text(), U"7");
    EXPECT_EQ(form4.Text1[29].text(), U"8");
    EXPECT_EQ(form4.Text1[30].text(), U"-1");
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
