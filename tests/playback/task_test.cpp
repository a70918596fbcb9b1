#include "platform/failure.h"
#include "scripts/script.h"
#include "scripts/task_files.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik {

using testing::HasSubstr;

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
    EXPECT_THAT(asked, HasSubstr("task\nask \"文件\" \"a b.txt\" file\nask \"条件\" \"x\\\\\\\"\"\nfile \"{文件}\"\n"));
    for (const char32_t* name : {U"条件", U"今天", U"a\"b", U"a}", U"a=b"})
        EXPECT_THROW(with_hole(asked, changeable_texts(asked).at(0).line, name), Failure) << to_utf8(name);
    rename_task(files, U"月报", U"日报");
    EXPECT_EQ(task_names(files), std::vector<Text>{U"日报"});
    EXPECT_EQ(split_line(quoted_word(U"\\u001b\x1b{\"\r")).at(0).text, U"\\u001b\x1b{\"\r");
}

} // namespace tarvik
