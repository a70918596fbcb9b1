#include "office/character_list.h"

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
    desk.open_text(U"");
    list_characters(desk.program);
    EXPECT_EQ(desk.installation.read("3150.txt"), "");
    EXPECT_TRUE(desk.dialogs.messages.empty());
}

} // namespace
} // namespace tarvik::test
