#include "columns/columns.h"
#include "tests/columns/column_desk.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

using Messages = std::vector<std::string>;

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

} // namespace
} // namespace tarvik::test
