#include "columns/column_query.h"
#include "columns/columns.h"
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

} // namespace
} // namespace tarvik::test
