#include "platform/failure.h"
#include "playback/player.h"
#include "playback/virtual_time.h"
#include "scripts/script.h"
#include "scripts/task_files.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace tarvik {

namespace {

using testing::HasSubstr;

class Tasks : public testing::Test {
protected:
    /// The status, then what was printed and reported.
    std::string play(const std::string& script, const std::map<Text, Text>& values = {}) const
    {
        Options options;
        options.installation = installation.path();
        options.clock = *parse_time("2025-01-31 23:59:59");
        options.values = values;
        std::istringstream lines(script);
        std::ostringstream out, errors;
        const int status = tarvik::play(options, lines, out, errors);
        return std::to_string(status) + "\n" + out.str() + errors.str();
    }

    test::TemporaryFolder installation;
};

} // namespace

TEST_F(Tasks, stop_at_the_first_difference)
{
    installation.write("story.txt", "a story\r\n");
    const std::string empty_query = "set Text1(1) \"\"\n", click = "click Command1(1)\nsay behind\n";
    const std::string message = R"(message "请在“查寻条件框”中输入要查寻的字符串；\r\n)"
                                R"(在“数目框”中输入隔离符，例如以段落标记来分割查寻的结果，则输入为“。”加上回车符。")"
                                "\n";
    const std::pair<std::string, std::string> differences[] = {
        {"file \"none.txt\"\nclick Command1(0)\nsay behind\n", "line 3: 没有这个文件："},
        {message + "click Form1\nsay behind\n", "line 3: 录制时的提示没有出现"},
        {"reply ok\nclick Form1\nsay behind\n", "line 3: 录制时的询问没有出现"},
        {"expect comp True\nsay behind\n", "line 2: comp is False, not True"},
        {"click Form1\nask 名称\nsay behind\n", "line 3: what is asked for stands ahead"},
        {"message \"other\"\nclick Form4.Command3\nsay behind\n", "line 3: "},
    };
    for (const auto& [script, complaint] : differences) {
        const std::string played = play("task\n" + script);
        EXPECT_THAT(played, testing::StartsWith("1\n")) << script;
        EXPECT_THAT(played, HasSubstr(complaint)) << script;
        EXPECT_THAT(played, testing::Not(HasSubstr("behind\n"))) << script;
    }
    EXPECT_THAT(play("task\nfile \"story.txt\"\nclick Command1(0)\nexpect lastpage 0\n"), testing::StartsWith("0\n"));
}

TEST_F(Tasks, fill_their_holes)
{
    const std::string script =
        "task\nask \"名称\" \"旧\"\nsay \"{名称} {今天} {本月} {上月} {别的} \\u007b今天}\" {今天}\n";
    EXPECT_EQ(play(script), "0\n旧 2025-01-31 2025-01 2024-12 {别的} {今天} {今天}\n");
    EXPECT_THAT(play(script, {{U"名称", U"新 \"1\""}}), HasSubstr("新 \"1\" 2025"));
    EXPECT_THAT(play(script, {{U"名", U"1"}}), HasSubstr("line 3: nothing asks for --set 名"));
    EXPECT_THAT(play("ask 名称\nsay x"), HasSubstr("line 1: --set 名称=VALUE is missing"));
    EXPECT_EQ(play("say \"{今天}\""), "0\n{今天}\n") << "what is no task is played as it stands";
}

TEST_F(Tasks, are_kept_under_names_of_their_own)
{
    test::TestProgram made;
    Files& files = made.program.platform.files;
    keep_task(made.program.platform, U"月报", {"task", R"(file "a b.txt")", R"(set Text1(1) "x\\\"")", "click Form1"});
    EXPECT_THROW(keep_task(made.program.platform, U"月报", {}), Failure);
    EXPECT_THROW(keep_task(made.program.platform, U"../月报", {}), Failure);
    const std::string script = files.read(task_path(U"月报"));
    EXPECT_THAT(script, testing::StartsWith("# 月报\n# 2024-03-01 9:05:07 "));
    const std::vector<ChangeableText> texts = changeable_texts(script);
    ASSERT_EQ(texts.size(), 2U);
    const std::string asked = with_hole(with_hole(script, texts[1].line, U"条件"), texts[0].line + 1, U"文件");
    EXPECT_THAT(asked, HasSubstr("task\nask \"文件\" \"a b.txt\" file\nask \"条件\" \"x\\\\\\\"\"\nfile \"{文件}\"\n"));
    rename_task(files, U"月报", U"日报");
    EXPECT_EQ(task_names(files), std::vector<Text>{U"日报"});
    EXPECT_EQ(split_line(quoted_word(U"\\u001b\x1b{\"\r")).at(0).text, U"\\u001b\x1b{\"\r");
}

} // namespace tarvik
