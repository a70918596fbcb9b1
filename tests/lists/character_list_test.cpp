#include "lists/lists.h"

#include "platform/text/code_page.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

TEST(CharacterList, has_a_record_for_each_character)
{
    TestProgram desk;
    desk.installation.write("3150.txt", "old");
    desk.open_text(U"a中\r\n𠀀");
    list_characters(desk.program);
    EXPECT_EQ(desk.installation.read("3150.txt"),
              encode(U"a\t*1\r\r\n中\t*2\r\r\n\r\t*3\r\r\n\n\t*4\r\r\n𠀀\t*5\r\r\n"));
    EXPECT_TRUE(TextView(desk.program.notice).contains(U"3150.txt")) << "nothing else shows that it was done";
    desk.open_text(U"");
    list_characters(desk.program);
    EXPECT_EQ(desk.installation.read("3150.txt"), "");
    Text text;
    std::string records;
    for (int number = 1; number <= 200'000; ++number) {
        text += number % 3 == 0 ? U'中' : U'a';
        records += (number % 3 == 0 ? encode(U"中") : "a") + "\t*" + std::to_string(number) + "\r\r\n";
    }
    desk.open_text(text);
    list_characters(desk.program);
    EXPECT_TRUE(desk.installation.read("3150.txt") == records); // megabytes are no message
    EXPECT_TRUE(desk.dialogs.messages.empty());
}

} // namespace
} // namespace tarvik::test
