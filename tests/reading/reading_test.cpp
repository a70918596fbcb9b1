#include "tests/reading/reading_desk.h"

#include <gmock/gmock.h>

namespace tarvik::test {
namespace {

using ::testing::IsEmpty;
using Reading = ReadingDesk;

TEST_F(Reading, pages_turn)
{
    EXPECT_EQ(press(1), "Tarvik 计算 之查寻|请读入文本文件！//页数");
    form1.page_size_box().set_text(U"3");
    open("abcdefg"); // with its line end nine characters: three pages and an empty one
    EXPECT_EQ(form1.page_box().text(), U"3");
    EXPECT_EQ(form1.RichTextBox2.text(), U"abcdefg\r\n");
    EXPECT_EQ(press(1), "Tarvik|开始阅读！这是第0页,/abc/0");
    EXPECT_EQ(press(1), "def/1");
    EXPECT_EQ(press(0), "Tarvik|目前已到首页，第0页,/abc/0");
    EXPECT_EQ(press(0), "abc/0");
    form1.page_size_box().set_text(U"2");
    EXPECT_EQ(press(1), "cd/1");
    EXPECT_EQ(press(1), "ef/2");
    EXPECT_EQ(press(1), "g\r/3");
    form1.page_box().set_text(U"4");
    EXPECT_EQ(press(1), "Tarvik|开始阅读！这是第3页,/ab/0") << "the number of the last page starts anew";
    form1.page_size_box().set_text(U"4");
    form1.page_box().set_text(U"3");
    EXPECT_EQ(press(1), "Tarvik|目前已经超出页面范围，已经跳到第4空页,/\n/4") << "the old page of a longer cut";
    form1.page_box().set_text(U"9");
    EXPECT_EQ(press(8), "\n/9");
    form1.page_box().set_text(U"1页");
    form1.query_box().set_text(U" G");
    EXPECT_EQ(press(8), "efg\r/1页");
    EXPECT_EQ(form1.RichTextBox1.marks(), (std::vector<Mark>{{Position(3), 1, 44564, 32}}));
    EXPECT_EQ(form1.lastpage, 2);
    form1.page_box().set_text(U"2");
    EXPECT_EQ(press(8), "\n/2");
}

TEST_F(Reading, odd_page_sizes_and_numbers_give_one_message)
{
    open("abc");
    for (const char32_t* size : {U"0", U"-5", U"0.5", U"x", U""}) {
        form1.page_size_box().set_text(size);
        form1.page_box().set_text(U"5");
        EXPECT_EQ(press(1), "Tarvik 计算 之查寻|每页的字数应为大于 0 的数字，请修改后再翻页！//5") << to_utf8(size);
        open("abcd");
        EXPECT_EQ(form1.RichTextBox2.text(), U"abcd\r\n");
        EXPECT_EQ(form1.page_box().text(), U"5") << "opening ends without a word";
        form1.page_box().set_text(number_text(form1.lastpage));
        EXPECT_EQ(press(1).substr(0, 23), "Tarvik 计算 之查寻") << "the first press after opening";
        EXPECT_EQ(form1.page_box().text(), number_text(form1.lastpage));
        EXPECT_FALSE(form1.RichTextBox1.visible());
    }
    form1.page_size_box().set_text(U"6");
    open("abcd");
    EXPECT_EQ(form1.lastpage, 1) << "a full page is followed by an empty one";
    form1.page_size_box().set_text(U"1e300");
    form1.page_box().set_text(U"-1");
    EXPECT_EQ(press(1), "abcd\r\n/0");
    for (const char32_t* page : {U"-2", U"1e9", U"-1e300"}) {
        form1.page_box().set_text(page);
        EXPECT_THROW(Command2_Click(program, 1), Failure) << to_utf8(page);
    }
    EXPECT_EQ(form1.pageno, 0);
    form1.page_box().set_text(U"-3");
    EXPECT_THROW(Command2_Click(program, 8), Failure);
    EXPECT_EQ(form1.pageno, -3) << "the number that was asked for, as with one behind the last page";
    EXPECT_EQ(form1.RichTextBox1.text(), U"abcd\r\n");
}

TEST_F(Reading, lines_of_other_systems_end_in_cr_lf)
{
    open("one\ntwo\n");
    EXPECT_EQ(form1.RichTextBox2.text(), U"one\r\ntwo\r\n\r\n");
    open("一\n二");
    EXPECT_EQ(form1.RichTextBox2.text(), U"一\r\n二\r\n");
    open("mixed\nlines\r\n");
    EXPECT_EQ(form1.RichTextBox2.text(), U"mixed\nlines\r\n\r\n") << "a text with a CR stays as it is";
    test.installation.write("现代汉语词典.txt", "前一条很长很长很长的。\n甲：第一个字的说明。\n乙：第二。\n");
    select_option(form1, form1.Option1);
    form1.query_box().set_text(U"乙");
    Command1_Click(program, 1);
    EXPECT_EQ(form1.RichTextBox1.text(), U"\r\n乙：第二。");
}

TEST_F(Reading, panes_are_switched_in_the_order_of_their_numbers)
{
    open("abc");
    std::string switched;
    program.listeners.property_changed = [&](const Control& control, Property property) {
        if (property != Property::Visible) return;
        switched += std::string(control.name()) + (control.visible() ? "+ " : "- ");
    };
    press(1);
    Form_Click(program);
    EXPECT_EQ(switched, "RichTextBox1+ RichTextBox2- RichTextBox1- RichTextBox2+ ");
}

TEST_F(Reading, opening_keeps_what_was_done_when_it_fails)
{
    open("one");
    test.dialogs.files = {std::nullopt};
    Command1_Click(program, 0);
    EXPECT_TRUE(test.module1().pages.get(0).empty());
    EXPECT_EQ(form1.RichTextBox2.text(), U"one\r\n");
    test.dialogs.files = {Text()}; // confirmed with no name in it
    Command1_Click(program, 0);
    EXPECT_EQ(form1.RichTextBox2.text(), U"one\r\n");
    test.dialogs.files = {U"d:\\gone.txt"};
    Command1_Click(program, 0);
    EXPECT_EQ(form1.RichTextBox2.text(), U"one\r\n");
    EXPECT_FALSE(form1.RichTextBox1.visible());
    EXPECT_THAT(test.dialogs.take_messages(), IsEmpty());
    open("");
    EXPECT_EQ(test.module1().pages.get(0), U"\r\n");
    form1.page_size_box().set_text(U"1");
    open(std::string(1'000'002, 'x'));
    EXPECT_EQ(form1.lastpage, 1'000'001);
    EXPECT_EQ(form1.page_box().text(), U"0");
    EXPECT_EQ(test.module1().pages.get(1'000'000), U"x");
}

} // namespace
} // namespace tarvik::test
