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

TEST(Keys, are_plain_characters_until_a_query_has_run)
{
    ColumnDesk desk;
    desk.open_text(U"cat\r\n");
    desk.form1().query_box().set_text(U"cat");
    EXPECT_EQ(desk.press("c?;:e,.qzp/"), "c?;:e,.qzp/");
    EXPECT_TRUE(desk.dialogs.messages.empty());
    EXPECT_EQ(desk.told_by("\x1b"),
              Messages{"Tarvik 计算 | 温情提示：\r\n含有查寻字符串且彼此不相同的数据行记录集合。"});
    EXPECT_TRUE(desk.program.form3.window.visible() && desk.form1().RichTextBox3.visible());
    EXPECT_EQ(desk.press("cat"), "at");
    EXPECT_EQ(desk.press("e?;:,.qz/"), "?z/");
}

TEST(Keys, say_what_they_do)
{
    ColumnDesk desk;
    desk.make_table(U"|\r\n");
    desk.program.form3.Text1[3].set_text(U"2");
    desk.program.form3.Text1[4].set_text(U"word");
    const std::string busy = " 温情提示：\r\n请先将comp设置为FALSE（按键e），然后进行单表之内的排序或统计。";
    const std::string column = " 温情提示：\r\n参与排序或者统计的suF表的列次为:1。";
    const std::pair<const char*, std::string> told[] = {
        {"c", "Tarvik 计算| 温情提示：\r\n参与比较的suF表的列次为:2，\r\n参与比较的suG表的列次为:word。"},
        {"z", "Tarvik  计算查寻 |" + busy},
        {"/", "Tarvik 计算|" + busy},
        {";", "Tarvik 计算 | 温情提示：\r\n将要显示的是2个表中 ”不∩“的记录行。"},
        {":", "Tarvik  计算查寻  | 温情提示：\r\n将要显示的是2个表中” ∩ “的记录行。"},
        {"e", "Tarvik 计算| 温情提示：\r\n只在当前表中比较或排序。"},
        {".", "Tarvik 计算 | 温情提示：\r\n将 不 显示还原后的数据数组。"},
        {",", "Tarvik 计算 | 温情提示：\r\n将 要 显示还原后的数据数组。"},
        {"z", "Tarvik 计算|" + column},
        {"/", "Tarvik 计算 |" + column},
    };
    for (const auto& [key, message] : told) EXPECT_EQ(desk.told_by(key), Messages{message});
    EXPECT_EQ(desk.pane(), "\t|\t\t\t1\t\r\n\t合计:\t\t\t1\t\r\n");
}

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

TEST(Keys, p_says_what_it_does)
{
    ColumnDesk desk;
    desk.program.form3.Text1[0].set_text(U"1");
    desk.program.form3.Text1[1].set_text(U"2");
    const auto last = [&desk](std::vector<Text> documents, const char* keys, std::initializer_list<Answer> replies) {
        desk.form1().answer = 7; // a No of an earlier question must start no comparison of two tables
        desk.press("e");
        desk.make_table(documents.front());
        if (documents.size() > 1) desk.press("c"), desk.make_table(documents.back());
        return desk.told_by(keys, replies).back();
    };
    const auto yes = Answer::Yes, no = Answer::No;
    const Text a = U"a\t|\r\n", ab = a + U"b\t|\r\n";
    const std::string choice = "\r\n请选择：是，代表输出相等的记录，否，代表输出不相等的记录。";
    EXPECT_EQ(last({U"20200125\t2020-01-05\t|\r\n"}, "p", {yes}), "Tarvik 计算|温情提示：后面的时间比前面的时间早！");
    EXPECT_EQ(last({U"12:30\t20-1-5\t|\r\n"}, "p", {yes}), "Tarvik 计算|第 0   行，时间格式字段长度异常，dan为:6  。");
    EXPECT_THAT(last({U"abcdefgh\t2020.1.5\t|\r\n"}, "p", {yes}), HasSubstr("\r\n第 0 行：abcd-ef-gh"));
    EXPECT_EQ(last({a}, "p", {no}), "Tarvik  计算查寻 | 温情提示：\r\n参与字段内查寻的suF表的列次为:1。");
    EXPECT_EQ(last({ab, a}, "p", {yes}),
              "  Tarvik  计算查寻 | 温情提示：\r\n  SUF表中的第1列含有与SUG表的第1列中字段“∩”的记录 。 ");
    EXPECT_EQ(last({ab, a}, ";p", {yes}),
              "  Tarvik 计算 | 温情提示：\r\n  SUF表中的第1列含有与SUG表的第1列中字段不“∩”的记录 。 ");
    EXPECT_EQ(last({ab, a}, ":p", {no, no}),
              "  Tarvik 计算 | 请注意：\r\n   SUF表的行数:2   与SUG表的行数：1 不相等，因此有效查寻行数只有 :1" +
                  choice);
    EXPECT_EQ(last({a, a}, "p", {no, yes}),
              "  Tarvik 计算| 提示：\r\n  SUF表中的第1列与SUG表的第1列中字段一一对应比较 。 " + choice);
    EXPECT_EQ(last({a, a}, ";p", {no}),
              "  Tarvik 计算| 请注意：\r\n 平行对应的比较操作步骤出现错误，请左键单击窗体后（恢复默认设置），重试！ ");
    EXPECT_EQ(last({a, ab}, "p", {}),
              "  Tarvik 计算| 请注意：\r\n    第1个表-SUF表的行数为: 1   小于第2个表-SUG表的行数：2\r\n"
              "当且仅当SUF表的行数大于等于SUG表的行数时，查寻才有效。\r\n左键单击窗体后（恢复默认设置），请重新查寻。");
}

TEST(Notes, are_kept_in_their_file)
{
    ColumnDesk desk;
    Form3& form3 = desk.program.form3;
    desk.make_table(U"a|\r\n");
    const std::string pane = desk.pane();
    desk.press("?");
    EXPECT_EQ(desk.pane(), pane); // there is no file yet
    Form3_Command1_Click(desk.program, 1);
    EXPECT_TRUE(form3.Text2.visible() && !form3.Text1[0].visible() && !form3.Label1[2].visible());
    form3.Text2.set_text(U"说明");
    desk.dialogs.replies = {Answer::OK};
    Form3_Command1_Click(desk.program, 0);
    EXPECT_EQ(desk.dialogs.take_messages(), Messages{"Tarvik 计算|此将保存Tarvik 计算说明的更改?"});
    EXPECT_EQ(desk.installation.read("admin123456.txt"), "\xcb\xb5\xc3\xf7\r\n");
    EXPECT_TRUE(!form3.Text2.visible() && form3.Text1[5].visible() && form3.window.window_state() == 0);
    desk.press("?");
    EXPECT_EQ(desk.pane(), "说明\r\n");
    Form3_Command1_Click(desk.program, 1);
    form3.Text2.set_text(U"lost");
    desk.dialogs.replies = {Answer::Cancel};
    Form3_Command1_Click(desk.program, 0);
    EXPECT_EQ(desk.installation.read("admin123456.txt"), "\xcb\xb5\xc3\xf7\r\n");
    Form3_Command1_Click(desk.program, 0);
    EXPECT_EQ(form3.window.window_state(), 1);
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
