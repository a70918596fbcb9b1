#include "columns/columns.h"
#include "columns/statistics.h"
#include "tests/columns/column_desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace tarvik::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Messages = std::vector<std::string>;

TEST(Views, stay_as_they_were_when_the_table_changes)
{
    ColumnDesk desk;
    desk.make_table(U"b\t|\r\na\t|\r\n");
    const PaneText split = desk.form1().RichTextBox3.content();
    desk.make_table(U"other\t|\r\n");
    desk.open_text(U"");
    EXPECT_EQ(to_utf8(split.view()), "suf(0,1)***b           suf(0,2)***|           \r\n"
                                     "suf(1,1)***a           suf(1,2)***|           \r\n\r\n");
    desk.make_table(U"1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t|\r\n");
    const PaneText& wide = desk.form1().RichTextBox3.content();
    EXPECT_EQ(wide.size(), wide.view().size()) << "the pane finds its places by counting";
}

TEST(Views, are_shown_though_no_scratch_file_can_be_written)
{
    ColumnDesk desk;
    for (const char* name : {"betweenp.txt", "between.txt", "between1.txt", "betweenping.txt", "between5.txt"})
        std::filesystem::create_directory(desk.installation.path() / name);
    desk.open_text(U"a\r\n");
    desk.form1().query_box().set_text(U"a");
    const Messages told = desk.told_by("\x1b");
    ASSERT_EQ(told.size(), 2U);
    EXPECT_THAT(told.front(), HasSubstr("betweenp.txt"));
    EXPECT_EQ(desk.pane(), "\ta\t\r\n\t\t\r\n");
    desk.program.form3.Text1[0].set_text(U"1");
    desk.press("q");
    EXPECT_EQ(desk.told_by("p", {Answer::No}).size(), 3U); // the folder, the question, the column
    EXPECT_EQ(desk.pane(), "\ta\t\t\r\n");
}

TEST(Views, tell_each_reason_once_whatever_file_has_it)
{
    ColumnDesk desk;
    for (const char* name : {"betweenp.txt", "betweenpq.txt"})
        std::filesystem::create_directory(desk.installation.path() / name);
    desk.open_text(U"a\r\n");
    desk.form1().query_box().set_text(U"a");
    for (int round = 0; round < 2; ++round) {
        query1(desk.program, U"a");
        devision1(desk.program);
    }
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre(HasSubstr("betweenp.txt")));
    EXPECT_FALSE(desk.screen.busy);
    desk.faulty.fail_at(1); // another reason
    devision1(desk.program);
    devision1(desk.program);
    EXPECT_FALSE(desk.screen.busy);
    EXPECT_THAT(desk.dialogs.take_messages(), testing::SizeIs(1));
}

TEST(Limits, are_reported_and_what_fits_is_kept)
{
    ColumnDesk desk;
    Text lines;
    for (int i = 0; i < 300'001; ++i) lines += number_text(i) + U"|\r\n";
    desk.open_text(lines + U"one more|\r\n and another|\r\n");
    desk.form1().query_box().set_text(U"|");
    EXPECT_EQ(query1(desk.program, U"|"), 0);
    EXPECT_EQ(desk.dialogs.take_messages(),
              Messages{"Tarvik 计算|目前，记录行已经超过软件所设定的阀值：300000条，请重试。"});
    EXPECT_FALSE(desk.form1().dbresult);
    EXPECT_EQ(desk.form1().sufcount, 0);
    EXPECT_EQ(desk.module1().sufrow.text(300'000), U"\t300000|\t");
    EXPECT_TRUE(desk.installation.read("betweenp.txt").ends_with("\t300000|\t\r\n\tone more|\t\r\n"));
    EXPECT_EQ(desk.pane(), "\r\n");

    desk.open_text(lines.substr(0, lines.find(U"10002|")));
    EXPECT_EQ(query1(desk.program, U"|"), 10'002);
    devision1(desk.program);
    statistitt(desk.program, 1);
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre(HasSubstr("10001")));
    EXPECT_EQ(desk.form1().keycount, 10'001);
    EXPECT_EQ(desk.module1().keylist.get(10'000), TextView(U"10000|"));

    Text many;
    for (int i = 0; i < 500'001; ++i) many += U"aa\r\n";
    desk.open_text(many + U"a last one\r\n");
    EXPECT_EQ(query1(desk.program, U"a"), 1);
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre(HasSubstr("1000001")));
    EXPECT_EQ(desk.form1().resultcount, 1'000'001);

    // Only the first 700,001 entries are emptied before a scan: the one behind the last hit counts as a copy.
    const Text half = many.substr(0, 374'999 * 4);
    desk.open_text(half + U"aa\r\na\r\n");
    query1(desk.program, U"a");
    desk.open_text(U"a\r\nba\r\n" + half);
    EXPECT_EQ(query1(desk.program, U"a"), 2);
    EXPECT_EQ(desk.module1().sufrow.text(0), U"\tba\t");
}

TEST(Limits, hold_for_a_document_of_one_line)
{
    ColumnDesk desk;
    Text line;
    while (line.size() < 240'000) line += U"{\"key\":\"v\"}, ";
    desk.open_text(line);
    desk.form1().query_box().set_text(U"key");
    EXPECT_THAT(desk.told_by("\x1b"), ElementsAre(HasSubstr("betweenp.txt"), HasSubstr("彼此不相同")))
        << "18,000 rows that begin with the document";
    EXPECT_EQ(desk.installation.read("betweenp.txt"), "\r\r\n");
    EXPECT_GT(desk.form1().sufcount, 18'000);
    EXPECT_EQ(desk.form1().RichTextBox3.content().slice(Position(2), 7).view, TextView(U"{\"key\":"));
    desk.form1().RichTextBox3.set_text({});
    EXPECT_THROW(devision1(desk.program), Failure);
    desk.dialogs.messages.clear();
}

} // namespace
} // namespace tarvik::test
