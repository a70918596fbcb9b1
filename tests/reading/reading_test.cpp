#include "platform/text/code_page.h"
#include "reading/queries.h"
#include "tests/reading/reading_desk.h"

#include <gmock/gmock.h>

#include <random>

namespace tarvik::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Reading = ReadingDesk;
using PageSearch = ReadingDesk;
using Saving = ReadingDesk;

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

TEST_F(Saving, of_equal_results_the_last_stays)
{
    std::mt19937 random(5);
    const SharedBuffer buffer = make_buffer(U"aabaab");
    for (int round = 0; round < 300; ++round) {
        TextArray results(20);
        std::vector<Text> told;
        for (std::size_t i = 0; i <= 12; ++i) {
            const TextView piece = buffer->view().substr(random() % 6, random() % 3);
            results.set(i, piece, buffer);
            told.push_back(piece.str());
        }
        for (std::size_t a = 0; a <= 10; ++a)
            for (std::size_t b = a + 1; b <= 10; ++b)
                if (told[a] == told[b]) told[a].clear();
        empty_earlier_copies(results, 10);
        for (std::size_t i = 0; i <= 12; ++i) ASSERT_EQ(results.get(i).str(), told[i]) << i;
    }
}

TEST_F(Saving, no_box_says_saved_when_the_file_cannot_be_written)
{
    test.drive_d.write("out.txt", "old");
    select_option(form1, form1.Option1);
    form1.resultcount = 1;
    bool saved = false;
    for (std::size_t operation = 1; !saved; ++operation) {
        ASSERT_LT(operation, 20U);
        test.module1().cnhits.set(0, U"entry");
        test.dialogs.replies = {Answer::Yes, Answer::Yes};
        test.dialogs.files = {U"d:\\out.txt"};
        test.faulty.fail_at(operation);
        Command1_Click(program, 4);
        saved = test.faulty.counted() < operation;
        const bool claimed = test.dialogs.take_messages().back().find("保存完毕") != std::string::npos;
        const bool renaming_fails = !saved && test.faulty.counted() == operation && operation == 4;
        EXPECT_EQ(claimed, saved || renaming_fails) << operation;
        EXPECT_EQ(test.drive_d.read("out.txt"), saved ? "entry\r\n" : "old") << operation;
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(test.drive_d.path()), {}), 2)
        << "the run folder and it";
}

TEST_F(Saving, both_english_dictionaries_are_written_side_by_side)
{
    select_option(form1, form1.Option2);
    form1.resultcount = 3;
    for (const auto& [array, texts] : {std::pair{&test.module1().zhhits, U"aab"}, {&test.module1().enhits, U"xyx"}})
        for (const std::size_t index : {0, 2, 3})
            array->set(index, TextView(texts).substr(index == 0 ? 0 : index - 1, 1));
    test.dialogs.replies = {Answer::Yes};
    test.dialogs.files = {U"d:\\out.txt"};
    Command1_Click(program, 4);
    EXPECT_EQ(test.drive_d.read("out.txt"), "a\r\ny\r\nb\r\nx\r\n") << "of equal ones the last stays";
}

} // namespace
} // namespace tarvik::test
