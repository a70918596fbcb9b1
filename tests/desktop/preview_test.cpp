#include "tests/desktop/desktop_fixture.h"

namespace tarvik::test {
namespace {

using DesktopPreview = DesktopFixture;

TEST_F(DesktopPreview, arrow_keys_walk_between_the_boxes_of_the_design)
{
    start();
    click("Form1.Command6");
    click("Form1.Command3");
    const struct {
        const char* from;
        Qt::Key key;
        const char* to;
    } steps[] = {
        {"Form4.Text1(0)", Qt::Key_Down, "Form4.Text1(2)"},
        {"Form4.Text1(2)", Qt::Key_Up, "Form4.Text1(0)"},
        {"Form4.Text1(0)", Qt::Key_Right, "Form4.Text1(1)"},
        {"Form4.Text1(1)", Qt::Key_Right, "Form4.Text2(0)"},
        {"Form4.Text2(0)", Qt::Key_Left, "Form4.Text1(1)"},
        {"Form4.Text1(26)", Qt::Key_Down, "Form4.Text1(28)"}, // from the last static row into the first dynamic one
        {"Form4.Text1(46)", Qt::Key_Down, "Form4.Text1(48)"}, // the last row
    };
    for (const auto& [from, key, to] : steps) {
        LineBox& box = find<LineBox>(from);
        in_front(box).setFocus();
        box.setCursorPosition(key == Qt::Key_Right ? static_cast<int>(box.text().size()) : 0);
        QTest::keyClick(&box, key);
        const QWidget& next = find(to);
        EXPECT_TRUE(wait_until([&next] { return next.hasFocus(); })) << from << " to " << to;
    }
}

TEST_F(DesktopPreview, a_click_on_a_cell_fills_the_pair_of_boxes_that_had_the_focus)
{
    for (const char* name : {"3159.txt", "designerA.xlsx", "automation.bin"}) copy_sample(name);
    start();
    open("3159.txt");
    click("Form1.Command6");
    click("Form1.Command3");
    expect_box("是");
    click("Form4.Command2"); // reads automation.bin
    in_front(find("Form4.Text1(4)")).setFocus();
    expect_box("是");
    click("Form4.Command3");
    QWidget& canvas = find("Form4.Preview.Canvas");
    ASSERT_TRUE(canvas.isVisible());
    EXPECT_GT(canvas.width(), 200);
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(program().form4.Text1[4].text(), U"1");
    EXPECT_EQ(program().form4.Text1[5].text(), U"1");
    find("Form4.Preview").close();
    EXPECT_FALSE(program().form4.Preview.visible());
    EXPECT_TRUE(find("Form4").isVisible());
}

} // namespace
} // namespace tarvik::test
