#include "platform/files/paths.h"
#include "playback/player.h"
#include "scripts/task_files.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik {

namespace {

// The words of a line, quoted ones in JSON.
std::string words_of(std::string_view line)
{
    std::string words;
    for (const Word& word : split_line(line)) {
        if (!words.empty()) words += ' ';
        words += word.quoted ? json_string(word.text) : word.utf8();
    }
    return words;
}

std::string complaint_about(std::string_view line)
{
    try {
        split_line(line);
    } catch (const ScriptFailure& failure) {
        return failure.what();
    }
    return {};
}

} // namespace

TEST(Script, splits_a_line_into_words)
{
    const std::pair<std::string_view, std::string_view> lines[] = {
        {"", ""},
        {"   ", ""},
        {"# say hello", ""},
        {"  # set back", ""},
        {"say #1", "say #1"},
        {" click \t Text1(1)  ", "click Text1(1)"},
        {"run\r", "run"},
        {R"(file d:\new\out.txt)", R"(file d:\new\out.txt)"},
        {R"(set Text2 "")", R"(set Text2 "")"},
        {R"(say it"s)", R"(say it"s)"},
        {R"(say "a b"  "#")", R"(say "a b" "#")"},
        {R"(type a "\r\n\t\"\\\/\e")", R"(type a "\r\n\t\"\\/\u001b")"},
        {R"(type a "\b\f\u0001")", R"(type a "\b\f\u0001")"},
        {R"(type a "\u4E2d中")", R"(type a "中中")"},
        {R"(type a "\ud840\uDC00𠀀")", R"(type a "𠀀𠀀")"},
        {"say 中　文", "say 中　文"},
    };
    for (const auto& [line, words] : lines) EXPECT_EQ(words_of(line), words) << line;
    ASSERT_EQ(split_line(R"("\ud840\udc00")").at(0).text.size(), 1U);
    ASSERT_EQ(split_line(R"("\ud840\u0041")").at(0).text.size(), 2U);
}

TEST(Script, refuses_what_is_no_word)
{
    const std::pair<std::string_view, std::string_view> lines[] = {
        {R"(say "abc)", "quote is not closed"},  {R"(say "abc\")", "quote is not closed"},
        {R"(say "a"b)", "blank is missing"},     {R"(say "\x")", "unknown escape \\x"},
        {R"(say "\u12g4")", "four hexadecimal"}, {R"(say "\u12")", "four hexadecimal"},
    };
    for (const auto& [line, complaint] : lines)
        EXPECT_THAT(complaint_about(line), testing::HasSubstr(complaint)) << line;
}

namespace {

Options parsed(const std::vector<std::string>& arguments)
{
    return parse_options(arguments);
}

std::string refusal(const std::vector<std::string>& arguments)
{
    try {
        parsed(arguments);
    } catch (const OptionError& error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(PlayerOptions, are_taken_in_any_order)
{
    const Options plain = parsed({"a.play"});
    EXPECT_EQ(plain.installation, "");
    EXPECT_EQ(plain.request, Options::Request::Play);
    EXPECT_EQ(plain.screen_width, 28800);
    EXPECT_FALSE(plain.print_to);

    const Options all = parsed({"--drive", "D=/tmp/out", "-", "--screen", "17000", "9562.5", "--engine", "ooxml",
                                "--drive", "e=/", "--print-to", "/tmp/paper/", "--install", "/tmp"});
    EXPECT_EQ(all.script, "-");
    EXPECT_EQ(all.drives.at('d'), full_path("/tmp/out"));
    EXPECT_EQ(all.drives.at('e'), full_path("/"));
    EXPECT_EQ(all.screen_height, 9562.5);
    EXPECT_EQ(all.engine, Engine::Ooxml);
    EXPECT_EQ(all.installation, full_path("/tmp"));
    EXPECT_EQ(parsed({"--names"}).request, Options::Request::Names);
    EXPECT_EQ(parsed({"--help"}).request, Options::Request::Help);
    EXPECT_EQ(parsed({"--version"}).request, Options::Request::Version);
}

TEST(PlayerOptions, are_refused_when_they_cannot_be_used)
{
    const std::pair<std::vector<std::string>, std::string_view> lines[] = {
        {{}, "no script"},
        {{"a", "b"}, "more than one script: b"},
        {{"--speed", "a"}, "unknown option --speed"},
        {{"a", "--clock"}, "--clock lacks its value"},
        {{"a", "--screen", "100"}, "--screen lacks its value"},
        {{"a", "--screen", "100", "high"}, "not high"},
        {{"a", "--screen", "0", "100"}, "not 0"},
        {{"a", "--install", "/no/such/folder"}, "there is no folder "},
        {{"a", "--drive", "d"}, "LETTER=DIR"},
        {{"a", "--drive", "dd=/tmp"}, "LETTER=DIR"},
        {{"a", "--drive", "1=/tmp"}, "LETTER=DIR"},
        {{"a", "--engine", "excel"}, "no engine excel"},
        {{"a", "--clock", "2024-3-1 09:05:07"}, "not 2024-3-1"},
        {{"a", "--clock", "2023-02-29 09:05:07"}, "not 2023-02-29"},
        {{"a", "--clock", "2024-02-29 24:00:00"}, "24:00:00"},
    };
    for (const auto& [arguments, complaint] : lines)
        EXPECT_THAT(refusal(arguments), testing::HasSubstr(complaint)) << complaint;
}

TEST(Tasks, are_kept_under_names_of_their_own)
{
    test::TestProgram made;
    Files& files = made.program.platform.files;
    keep_task(made.program.platform, U"月报", {"task", R"(file "a b.txt")", R"(set Text1(1) "x\\\"")", R"(input "z")"});
    EXPECT_THROW(keep_task(made.program.platform, U"月报", {}), Failure);
    EXPECT_THROW(keep_task(made.program.platform, U"../月报", {}), Failure);
    const std::string script = files.read(task_path(U"月报"));
    EXPECT_THAT(script, testing::StartsWith("# 月报\n# 2024-03-01 9:05:07 "));
    const std::vector<ChangeableText> texts = changeable_texts(script);
    ASSERT_EQ(texts.size(), 3U);
    const std::string asked = with_hole(with_hole(script, texts[1].line, U"条件"), texts[0].line + 1, U"文件");
    EXPECT_THAT(asked, testing::HasSubstr(
                           "task\nask \"文件\" \"a b.txt\" file\nask \"条件\" \"x\\\\\\\"\"\nfile \"{文件}\"\n"));
    for (const char32_t* name : {U"条件", U"今天", U"a\"b", U"a}", U"a=b"})
        EXPECT_THROW(with_hole(asked, changeable_texts(asked).at(0).line, name), Failure) << to_utf8(name);
    rename_task(files, U"月报", U"日报");
    EXPECT_EQ(task_names(files), std::vector<Text>{U"日报"});
    EXPECT_EQ(split_line(quoted_word(U"\\u001b\x1b{\"\r")).at(0).text, U"\\u001b\x1b{\"\r");
}

} // namespace tarvik
