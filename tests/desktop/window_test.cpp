#include "tests/desktop/desktop_fixture.h"

namespace tarvik::test {
namespace {

using DesktopWindow = DesktopFixture;

TEST_F(DesktopWindow, starts_with_the_opening_screen_and_keys_for_the_query_box)
{
    installation.write("coclus.txt", "\xbb\xb6\xd3\xad\r\nsecond\r\n"); // 欢迎 in GBK
    installation.write("123.jpg", "no picture");
    start();
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_EQ(shown_lines(find<TextWidget>("Form1.RichTextBox2")), (QStringList{"欢迎", "second", ""}));
    EXPECT_TRUE(find("Form1.Text1(1)").hasFocus());
    EXPECT_TRUE(form1().focusquery);
    EXPECT_EQ(desktop->main_window().windowTitle(), "Tarvik 计算");
    EXPECT_FALSE(find("Form1.Frame1").isVisible());
    // The default text goes with the first key.
    QTest::keyClick(&find("Form1.Text1(1)"), 'x');
    EXPECT_EQ(form1().query_box().text(), U"x");
}

TEST_F(DesktopWindow, keys_of_a_sequence_are_typed_in_a_row_and_behind_a_button)
{
    installation.write("coclus.txt", "a\tx\tx\r\nb\ty\tx\r\nb\tz\tx\r\n");
    start();
    retype("x");
    expect_box("确定");
    type("Form1.Text1(1)", "\x1b");
    EXPECT_TRUE(find("Form3").isVisible());
    LineBox& box = find<LineBox>("Form1.Text1(1)");
    EXPECT_TRUE(wait_until([&] { return box.hasFocus(); }));
    type("Form1.Text1(1)", "q");
    EXPECT_EQ(box.text(), "x") << "q is eaten";
    click("Form1.Command6");
    expect_box("确定");
    click("Form1.Command7(3)");
    EXPECT_TRUE(find("Form1.RichTextBox3").isVisible());
    EXPECT_TRUE(wait_until([&] { return box.hasFocus(); }));
}

TEST_F(DesktopWindow, a_tick_waits_while_a_box_is_open)
{
    start();
    form1().Timer1[0].set_enabled(true);
    double before = 0;
    expect_box("否");
    QTimer::singleShot(0, [&] { before = form1().RichTextBox1.width(); });
    desktop->main_window().close();
    EXPECT_TRUE(desktop->main_window().isVisible());
    EXPECT_EQ(form1().RichTextBox1.width(), before);
    EXPECT_TRUE(wait_until([&] { return form1().RichTextBox1.width() < before; }));
}

TEST_F(DesktopWindow, the_notes_are_kept_and_the_window_of_column_numbers_is_set_aside)
{
    start();
    form1().query_box().set_text(U"no such text");
    expect_box("确定");
    type("Form1.Text1(1)", "\x1b");
    click("Form3.Command1(1)");
    EXPECT_FALSE(find("Form3.Label1(0)").isVisible());
    type("Form3.Text2", "甲\r乙");
    EXPECT_EQ(program().form3.Text2.text(), U"甲\r\n乙");
    expect_box("确定");
    click("Form3.Command1(0)");
    EXPECT_EQ(installation.read("admin123456.txt"), "\xbc\xd7\r\n\xd2\xd2\r\n");
    EXPECT_TRUE(find("Form3.Text1(0)").isVisible());
    click("Form3.Command1(0)");
    EXPECT_FALSE(find("Form3").isVisible());
    EXPECT_EQ(program().form3.window.window_state(), 1);
}

TEST_F(DesktopWindow, the_designer_is_edited_closed_and_opened_anew)
{
    start();
    click("Form1.Command6");
    click("Form1.Command3");
    ASSERT_TRUE(find("Form4").isVisible());
    EXPECT_EQ(find<LineBox>("Form4.Text2(49)").text(), "-1");
    click("Form4.Text1(0)"); // a click empties the box
    EXPECT_EQ(find<LineBox>("Form4.Text1(0)").text(), "");
    type("Form4.Text1(0)", "12");
    EXPECT_EQ(program().form4.Text1[0].text(), U"12");
    QTest::mouseDClick(&find("Form4.Text3"), Qt::LeftButton);
    EXPECT_EQ(find<LineBox>("Form4.Text3").text(), "");
    expect_box("取消"); // a number was typed
    find("Form4").close();
    EXPECT_TRUE(find("Form4").isVisible());
    expect_box("确定");
    find("Form4").close();
    EXPECT_FALSE(find("Form4").isVisible());
    EXPECT_FALSE(program().module1.designeropen);
    click("Form1.Command3");
    EXPECT_TRUE(find("Form4").isVisible());
    EXPECT_EQ(find<LineBox>("Form4.Text1(0)").text(), "0") << "the texts of the design";
}

class BrokenLines final : public LineSource {
public:
    std::size_t line_count() const override { return 3; }
    void append_line(std::size_t, Text&) const override { throw std::bad_alloc(); }
};

TEST_F(DesktopWindow, goes_on_when_something_cannot_be_shown)
{
    start();
    expect_box("确定");
    form1().RichTextBox2.set_content(PaneText(std::make_shared<BrokenLines>()));
    form1().page_box().set_text(U"77");
    click("Form1.Text1(5)");
    EXPECT_EQ(boxes.back(), "Tarvik 计算| 请注意：\n操作没有完成：内存不足。");
    EXPECT_EQ(find<LineBox>("Form1.Text1(4)").text(), "77") << "everything else is shown";
    form1().RichTextBox2.set_text(U"well");
    type("Form1.Text1(1)", "x");
    EXPECT_TRUE(form1().query_box().text().find(U'x') != Text::npos);
}

} // namespace
} // namespace tarvik::test
