#include "platform/text/code_page.h"
#include "reading/marking.h"
#include "reading/paging.h"
#include "tests/reading/reading_desk.h"

#include <gmock/gmock.h>

#include <random>

namespace tarvik::test {
namespace {

using ::testing::HasSubstr;
using PageSearch = ReadingDesk;

TEST_F(PageSearch, stops_at_each_page_and_collects_words)
{
    form1.Option3.set_value(true);
    form1.query_box().set_text(U" qv");
    open("........................--AB12345678qv");
    form1.number_box().set_text(U"12");
    test.dialogs.replies = {Answer::OK, Answer::OK};
    Command2_Click(program, 1);
    EXPECT_EQ(test.installation.read("betweensousuo.txt"), "\r\r\nAB12345678qv;\r\n");
    EXPECT_EQ(form1.matchpos, 0);
    EXPECT_EQ(test.dialogs.take_messages().back(), "Tarvik|查寻完毕,再也没有符合条件的结果！");
}

TEST_F(PageSearch, collected_words_are_those_of_the_two_walks)
{
    std::mt19937 random(11);
    form1.Option3.set_value(true);
    const std::array<std::string, 7> pieces{"qv", "ABCDEF", "x", "]", "-", "9", "q"};
    for (int round = 0; round < 400; ++round) {
        std::string text;
        while (text.size() < 60) text += pieces[random() % pieces.size()];
        const std::size_t width = random() % 30;
        const Text query = round % 3 == 0 ? U"q" : U"qv";
        form1.query_box().set_text(query);
        open(text);
        form1.number_box().set_text(number_text(width));
        test.dialogs.replies = {Answer::OK, Answer::OK};
        std::string lines = "\r\r\n";
        for (const Position place : places_to_mark(form1.RichTextBox2.text(), query).marked) {
            if (place.number() <= width) continue;
            const Text look = mid(form1.RichTextBox2.text(), place.number() - width, width + query.size()).str() + U";";
            const TextView word = mid(look, sousss(look, query));
            if (instr(word, query) > 8) lines += encode(sousss1(word)) + "\r\n";
        }
        press(1);
        ASSERT_EQ(test.installation.read("betweensousuo.txt"), lines) << text << ' ' << width;
    }
}

TEST_F(PageSearch, a_long_look_back_is_not_repeated_for_each_match)
{
    form1.Option3.set_value(true);
    form1.query_box().set_text(U"qv");
    form1.page_size_box().set_text(U"9999999");
    std::string text;
    for (int i = 0; i < 20'000; ++i) text += "-abcdefghijqv";
    open(text);
    form1.number_box().set_text(U"180009");
    test.dialogs.replies = {Answer::OK, Answer::OK};
    EXPECT_TRUE(TextView(from_utf8(press(1))).contains(U"betweensousuo.txt已经超过 64 MB"));
    EXPECT_LT(test.installation.read("betweensousuo.txt").size(), 65U << 20);
}

TEST_F(PageSearch, a_side_file_that_cannot_be_written_costs_one_message)
{
    std::filesystem::create_directory(test.installation.path() / "betweensousuo.txt");
    form1.Option3.set_value(true);
    form1.query_box().set_text(U"qv");
    form1.page_size_box().set_text(U"20");
    open("--AB12345678qv------AB12345678qv");
    form1.number_box().set_text(U"12");
    test.dialogs.replies = {Answer::OK, Answer::OK, Answer::OK};
    Command2_Click(program, 1);
    const auto told = test.dialogs.take_messages();
    ASSERT_EQ(told.size(), 6U); // the beginning, the question, the file, two pages, the end
    EXPECT_THAT(told[2], HasSubstr("betweensousuo.txt"));
}

} // namespace
} // namespace tarvik::test
