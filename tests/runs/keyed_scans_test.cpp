#include "runs/keyed_scans.h"

#include "platform/text/code_page.h"
#include "tests/support/failure_of.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

using testing::ElementsAre;

class KeyedScans : public testing::Test {
protected:
    TestProgram desk;
    Program& program = desk.program;
    Form1& form1 = desk.form1();

    KeyedScans()
    {
        form1.query_box().set_text(U"An");
        desk.open_text(U"head\r\na\tk1\r\nb\tk1\r\n");
    }
};

TEST_F(KeyedScans, an_empty_report_is_reported_and_the_pane_is_scanned_as_it_is)
{
    desk.installation.write("3138.txt", "");
    EXPECT_EQ(query2(program, U"k1", false), 2);
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre("Tarvik 计算|打开文件失败！"));
    EXPECT_EQ(form1.sufcount, 2);
    EXPECT_EQ(form1.answer, 1);
}

TEST_F(KeyedScans, a_missing_report_is_named_and_the_pane_alone_needs_none)
{
    EXPECT_THAT(failure_of([&] { query3(program, U"k1", false); }), testing::HasSubstr("保留.txt"));
    EXPECT_EQ(query5(program, U"k1", false), 2);
    EXPECT_EQ(query7(program, U"k1", {}), 2);
    EXPECT_TRUE(desk.dialogs.messages.empty());
}

} // namespace
} // namespace tarvik::test
