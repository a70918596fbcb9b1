#include "playback/player.h"

#include "platform/failure.h"
#include "platform/files/paths.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace tarvik {

namespace {

using testing::HasSubstr;

class Player : public testing::Test {
protected:
    struct Played {
        int status;
        std::string out, errors;
    };

    Options options() const
    {
        Options options;
        options.installation = installation.path();
        options.drives['d'] = drive.path();
        options.clock = *parse_time("2025-01-31 23:59:59");
        return options;
    }

    Played play(const std::string& script, const std::map<Text, Text>& values = {}) const
    {
        Options asked = options();
        asked.values = values;
        std::istringstream lines(script);
        std::ostringstream out, errors;
        const int status = tarvik::play(asked, lines, out, errors);
        return {status, out.str(), errors.str()};
    }

    test::TemporaryFolder installation, drive;
};

} // namespace

TEST_F(Player, ends_with_a_message_when_its_output_is_closed)
{
    std::istringstream lines("say one\nsay two\n");
    std::ostringstream errors;
    std::ostream closed(nullptr);
    EXPECT_EQ(tarvik::play(options(), lines, closed, errors), 1);
    EXPECT_EQ(errors.str(), "line 1: the output cannot be written\n");
}

TEST_F(Player, ends_at_a_failure_and_tells_its_line)
{
    const std::pair<std::string_view, std::string_view> failures[] = {
        {"dance", "unknown action dance"},
        {"click", "click lacks a word"},
        {"click Command1(0) twice", "a word too many: twice"},
        {"click Command1(9)", "unknown control Command1(9)"},
        {"click Timer3", "a timer is nothing"},
        {"click Form1.Form3", "unknown control Form1.Form3"},
        {"type Command6 \"a\"", "only a box or a pane"},
        {"select Text1(1) first 2", "first is no number"},
        {"select Text1(1) 1.5 2", "1.5 is no place"},
        {"mouse Text1(1) down upper", "unknown word upper"},
        {"mouse Text1(1) sideways left", "unknown word sideways"},
        {"mouse Text1(1) down left shift", "unknown word shift"},
        {"menu copy1", "no context menu is open"},
        {"resize Text1(1) 1 1", "Text1(1) is no window"},
        {"tick -1", "-1 is no time"},
        {"reply maybe", "unknown reply maybe"},
        {"say \"open", "a quote is not closed"},
        {"show nobody", "unknown name nobody"},
        {"show Text1(1).Caption", "unknown name Text1(1).Caption"},
        {"show Timer3.Left", "unknown name Timer3.Left"},
        {"show pages", "unknown name pages"},
        {"show suf(1)", "unknown name suf(1)"},
        {"show pages(x)", "unknown name pages(x)"},
        {"show pages(1000001)", "above 1000000"},
        {"show suf(0,181)", "above 180"},
        {"close Form1", "no reply was left"},
        {"reply ok\nclose Form1", "does not offer the reply ok"},
    };
    for (const auto& [lines, complaint] : failures) {
        const Played played =
            play("\xef\xbb\xbf# what fails\r\n\nsay before\n" + std::string(lines) + "\nsay behind\n");
        const auto line = 4 + std::count(lines.begin(), lines.end(), '\n');
        EXPECT_EQ(played.status, 1) << lines;
        EXPECT_EQ(played.out.substr(0, 7), "before\n") << lines;
        EXPECT_THAT(played.out, testing::Not(HasSubstr("behind"))) << lines;
        EXPECT_THAT(played.errors, testing::StartsWith("line " + std::to_string(line) + ": ")) << lines;
        EXPECT_THAT(played.errors, HasSubstr(complaint)) << lines;
    }
}

TEST_F(Player, goes_on_after_a_missed_expectation)
{
    const Played played = play("expect Text1(1).Text 查寻条件\nexpect lastpage 1\nexpect Text1(2).Text \"1\"\nsay end");
    EXPECT_EQ(played.status, 1);
    EXPECT_EQ(played.out, "end\n");
    EXPECT_EQ(played.errors, "line 2: lastpage is 0, not 1\nline 3: Text1(2).Text is \"数目\", not \"1\"\n");
    EXPECT_EQ(play("expect comp False\nexpect xlApp Nothing\nexpect RichTextBox1.Marks []").status, 0);
}

TEST_F(Player, ends_with_the_main_window)
{
    const Played played = play("reply no yes ok\nclose Form1\nexpect Form1.Visible True\nclose Form1\ndance");
    EXPECT_EQ(played.status, 0) << played.errors;
    EXPECT_EQ(std::count(played.out.begin(), played.out.end(), '\n'), 2);
}

TEST_F(Player, can_show_every_name_that_it_lists)
{
    std::stringstream names;
    list_names(names);
    std::string script = "show";
    for (std::string name; std::getline(names, name);) {
        for (const auto& [index, value] : {std::pair("(i)", "(7)"), {"(i,j)", "(7,3)"}})
            if (name.ends_with(index)) name.replace(name.size() - std::string_view(index).size(), npos, value);
        script += " " + name;
    }
    const Played played = play(script);
    EXPECT_EQ(played.errors, "");
    EXPECT_EQ(std::ranges::count(played.out, '\n'), std::ranges::count(script, ' '));
}

TEST_F(Player, stops_a_task_at_the_first_difference)
{
    installation.write("story.txt", "a story\r\n");
    const std::string message = R"(message "请在“查寻条件框”中输入要查寻的字符串；\r\n)"
                                R"(在“数目框”中输入隔离符，例如以段落标记来分割查寻的结果，则输入为“。”加上回车符。")"
                                "\n";
    const std::pair<std::string, std::string> differences[] = {
        {"file \"none.txt\"\nclick Command1(0)\nsay behind\n", "line 3: 没有这个文件："},
        {message + "click Form1\nsay behind\n", "line 3: 录制时的提示没有出现"},
        {"reply ok\nclick Form1\nsay behind\n", "line 3: 录制时的询问没有出现"},
        {"expect comp True\nsay behind\n", "line 2: comp 是 False，录制时是 True"},
        {"click Form1\nask 名称\nsay behind\n", "line 3: what is asked for stands ahead"},
        {"message \"other\"\nclick Form4.Command3\nsay behind\n", "line 3: "},
    };
    for (const auto& [script, complaint] : differences) {
        const Played played = play("task\n" + script);
        EXPECT_EQ(played.status, 1) << script;
        EXPECT_THAT(played.errors, HasSubstr(complaint)) << script;
        EXPECT_THAT(played.out, testing::Not(HasSubstr("behind\n"))) << script;
    }
    EXPECT_EQ(play("task\nfile \"story.txt\"\nclick Command1(0)\nexpect lastpage 0\n").status, 0);
}

TEST_F(Player, fills_the_holes_of_a_task)
{
    const std::string script =
        "task\nask \"名称\" \"旧\"\nsay \"{名称} {今天} {本月} {上月} {别的} \\u007b今天}\" {今天}\n";
    EXPECT_EQ(play(script).out, "旧 2025-01-31 2025-01 2024-12 {别的} {今天} {今天}\n");
    EXPECT_THAT(play(script, {{U"名称", U"新 \"1\""}}).out, HasSubstr("新 \"1\" 2025"));
    EXPECT_THAT(play(script, {{U"名", U"1"}}).errors, HasSubstr("line 3: nothing asks for --set 名"));
    EXPECT_THAT(play("ask 名称\nsay x").errors, HasSubstr("line 1: --set 名称=VALUE is missing"));
    EXPECT_EQ(play("say \"{今天}\"").out, "{今天}\n") << "what is no task is played as it stands";
}

TEST(PlayerPrinterTest, keeps_every_copy)
{
    const test::TemporaryFolder folder;
    folder.write("book.xlsx", "one");
    std::ostringstream out;
    Transcript transcript(&out);
    PlayerPrinter printer(transcript, folder.path() / "paper");
    printer.print(folder.path() / "book.xlsx", U"d:\\out/表.xlsx");
    folder.write("book.xlsx", "two");
    printer.print(folder.path() / "book.xlsx", U"表.xlsx");
    EXPECT_EQ(folder.read("paper/表.xlsx"), "one");
    EXPECT_EQ(folder.read("paper/表 (2).xlsx"), "two");
    EXPECT_EQ(out.str(), "print \"表.xlsx\"\nprint \"表.xlsx\"\n");
    const Text full(longest_name - 5, U'a'); // the number makes it too long: it is cut
    for (int copy = 0; copy < 2; ++copy) printer.print(folder.path() / "book.xlsx", full + U".xlsx");
    EXPECT_EQ(folder.read("paper/" + std::string(longest_name - 9, 'a') + " (2).xlsx"), "two");

    EXPECT_THROW(PlayerPrinter(transcript, std::nullopt).print(folder.path() / "book.xlsx", U"表.xlsx"), Failure);
    EXPECT_THROW(printer.print(folder.path() / "none.xlsx", U"none.xlsx"), Failure);
}

} // namespace tarvik
