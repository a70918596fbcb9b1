#include "columns/columns.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace tarvik::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Messages = std::vector<std::string>;

/// A program with a document and the keys to work on it.
class ColumnDesk : public TestProgram {
public:
    /// Presses the keys in the query box; gives those that would reach it.
    std::string press(std::string_view keys)
    {
        std::string reached;
        for (const char key : keys) {
            bool eaten = false;
            column_keys(program, static_cast<unsigned char>(key), eaten);
            if (!eaten) reached += key;
        }
        return reached;
    }
    void make_table(TextView document, TextView needle = U"|")
    {
        open_text(document);
        form1().query_box().set_text(needle.str());
        press("\x1bq");
        dialogs.messages.clear();
    }
    std::vector<std::string> told_by(std::string_view keys, std::initializer_list<Answer> replies = {})
    {
        dialogs.replies = replies;
        program.scratch_failures.clear(); // an action of its own
        press(keys);
        return dialogs.take_messages();
    }
    std::string pane() { return to_utf8(form1().RichTextBox3.text()); }
};

TEST(Keys, a_box_without_a_number_is_named_and_nothing_changes)
{
    const std::array<std::string, 6> meanings{"列值 A", "列值 B", "间隔 C", "第一个表", "第二个表", "排序或统计的列"};
    struct Case {
        const char* keys;
        int box;
        std::initializer_list<Answer> replies;
        std::vector<Text> bad;
    };
    const std::vector<Text> no_columns = {U"", U"-1", U"181", U"1.5", U"一", U"1 2"};
    const Case cases[] = {
        {"c", 3, {}, no_columns},
        {"z", 5, {}, no_columns},
        {"/", 5, {}, no_columns},
        {"p", 0, {Answer::Yes}, no_columns},
        {"p", 1, {Answer::Yes}, no_columns},
        {"p", 2, {Answer::Yes}, {U"", U"十"}},
        {"p", 0, {Answer::No}, no_columns},
        {"p", 1, {Answer::No}, {U"", U"0", U"1.5", U"x"}},
    };
    for (const Case& one : cases) {
        ColumnDesk desk;
        desk.make_table(U"b\t2020-01-05|\r\na\t2020-01-20|\r\n");
        desk.program.form3.Text1[0].set_text(U"2");
        const std::string pane = desk.pane();
        for (const Text& bad : one.bad) {
            desk.program.form3.Text1[one.box].set_text(bad);
            desk.dialogs.replies = one.replies;
            try {
                desk.press(one.keys);
                ADD_FAILURE() << one.keys << one.box << to_utf8(bad);
            } catch (const Failure& failure) {
                EXPECT_THAT(failure.what(), HasSubstr(meanings.at(static_cast<std::size_t>(one.box))));
            }
            EXPECT_FALSE(desk.form1().comp);
            EXPECT_EQ(desk.pane(), pane);
            EXPECT_EQ(desk.module1().sufrow.text(0), U"\tb\t2020-01-05|\t");
        }
    }
}

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

TEST(Views, are_shown_though_no_scratch_file_can_be_written_and_each_reason_is_told_once)
{
    ColumnDesk desk;
    for (const char* name : {"betweenp.txt", "betweenpq.txt", "between5.txt"})
        std::filesystem::create_directory(desk.installation.path() / name);
    desk.open_text(U"a\r\n");
    desk.form1().query_box().set_text(U"a");
    desk.program.form3.Text1[0].set_text(U"1");
    for (int round = 0; round < 2; ++round) {
        query1(desk.program, U"a");
        EXPECT_EQ(desk.pane(), "\ta\t\r\n\t\t\r\n");
        devision1(desk.program);
    }
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre(HasSubstr("betweenp.txt")));
    EXPECT_EQ(desk.told_by("p", {Answer::No}).size(), 3U); // the folder, the question, the column
    EXPECT_EQ(desk.pane(), "\ta\t\t\r\n");
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
    EXPECT_EQ(query1(desk.program, U"|").rows, 0);
    EXPECT_EQ(desk.dialogs.take_messages(),
              Messages{"Tarvik 计算|目前，记录行已经超过软件所设定的阀值：300000条，请重试。"});
    EXPECT_FALSE(desk.form1().dbresult);
    EXPECT_EQ(desk.form1().sufcount, 0);
    EXPECT_EQ(desk.module1().sufrow.text(300'000), U"\t300000|\t");
    EXPECT_TRUE(desk.installation.read("betweenp.txt").ends_with("\t300000|\t\r\n\tone more|\t\r\n"));
    EXPECT_EQ(desk.pane(), "\r\n");

    desk.open_text(lines.substr(0, lines.find(U"10002|")));
    EXPECT_EQ(query1(desk.program, U"|").rows, 10'002);
    devision1(desk.program);
    statistitt(desk.program, 1);
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre(HasSubstr("10001")));
    EXPECT_EQ(desk.form1().keycount, 10'001);
    EXPECT_EQ(desk.module1().keylist.get(10'000), TextView(U"10000|"));

    Text many;
    for (int i = 0; i < 500'001; ++i) many += U"aa\r\n";
    desk.open_text(many + U"a last one\r\n");
    EXPECT_EQ(query1(desk.program, U"a").rows, 1);
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre(HasSubstr("1000001")));
    EXPECT_EQ(desk.form1().resultcount, 1'000'001);

    // Only the first 700,001 entries are emptied before a scan: the one behind the last hit counts as a copy.
    const Text half = many.substr(0, 374'999 * 4);
    desk.open_text(half + U"aa\r\na\r\n");
    query1(desk.program, U"a");
    desk.open_text(U"a\r\nba\r\n" + half);
    EXPECT_EQ(query1(desk.program, U"a").rows, 2);
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
