#include "platform/text/code_page.h"
#include "tests/reading/reading_desk.h"

#include <gmock/gmock.h>

#include <random>

namespace tarvik::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Saving = ReadingDesk;

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

TEST_F(Saving, takes_the_path_of_the_last_work)
{
    Module1& module1 = test.module1();
    form1.RichTextBox1.set_text(U"Shown 页");
    form1.RichTextBox3.set_text(U"TABLE");
    form1.resultcount = 3;
    const std::array arrays{&module1.hits, &module1.cnhits, &module1.filehits, &module1.zhhits, &module1.enhits};
    const auto save = [&](std::deque<Answer> replies, std::optional<Text> file) {
        for (std::size_t i = 0; i < arrays.size(); ++i)
            for (const std::size_t index : {0, 2, 3})
                arrays[i]->set(index, Text(1, U'0' + static_cast<char32_t>(i)) + (index > 1 ? U"1" : U"0"));
        test.dialogs.replies = std::move(replies);
        test.dialogs.files = {std::move(file)};
        Command1_Click(program, 4);
        return test.dialogs.take_messages();
    };
    const Text path = U"d:\\out.txt";
    const std::string question = "Tarvik 计算 之 查寻存储|d:\\out.txt已经存在。\r\n要替换她吗？";

    EXPECT_EQ(save({Answer::Yes}, path).size(), 2U);
    EXPECT_EQ(test.drive_d.read("out.txt"), "00\r\n01\r\n");
    EXPECT_TRUE(module1.hits.get(2).empty()) << "of the equal ones the last stays";
    EXPECT_EQ(save({Answer::No, Answer::No}, path).back(), question);
    EXPECT_EQ(test.drive_d.read("out.txt"), "00\r\n01\r\n");
    save({Answer::No, Answer::Yes}, path);
    EXPECT_EQ(test.drive_d.read("out.txt"), encode(U"shown 页\r\n"));
    save({Answer::Yes}, std::nullopt);
    EXPECT_FALSE(module1.hits.get(2).empty());

    form1.dbresult = true;
    EXPECT_THAT(save({Answer::Yes}, path), ElementsAre(HasSubstr("Tarvik 计算 查寻存储|将要保存的是excel"), question));
    EXPECT_EQ(test.drive_d.read("out.txt"), "table\r\n\r\n");
    const struct {
        OptionButton& option;
        std::string done, written;
    } options[] = {{form1.Option1, "查寻汉语词典的查寻结果：", "10\r\n11\r\n"},
                   {form1.Option2, "查寻牛津英语的查寻结果：", "30\r\n40\r\n31\r\n41\r\n"},
                   {form1.Option3, "查寻文件的查寻结果：", "20\r\n21\r\n"}};
    for (const auto& one : options) {
        select_option(form1, one.option);
        EXPECT_EQ(save({Answer::Yes, Answer::Yes}, path).back(),
                  "Tarvik 计算 之 查寻&存储|" + one.done + "\r\n保存完毕！");
        EXPECT_EQ(test.drive_d.read("out.txt"), one.written);
    }
    EXPECT_EQ(save({Answer::Yes}, U"d:\\no folder\\out.txt").size(), 2U) << "it fails without a word";
}

} // namespace
} // namespace tarvik::test
