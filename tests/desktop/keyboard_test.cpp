#include "tests/desktop/desktop_fixture.h"

#include "events/events.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QTextBlock>

namespace tarvik::test {
namespace {

using DesktopKeyboard = DesktopFixture;

TEST_F(DesktopKeyboard, commands_are_offered_as_they_are_typed)
{
    start();
    LineBox& box = find<LineBox>("Form1.Text1(1)");
    auto& list = find<CommandList>("commands");
    box.selectAll();
    type("Form1.Text1(1)", "A");
    EXPECT_FALSE(list.isVisible());
    type("Form1.Text1(1)", "n");
    EXPECT_TRUE(list.isVisible());
    EXPECT_GT(list.count(), 15);
    type("Form1.Text1(1)", " test");
    EXPECT_EQ(list.count(), 3);
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_EQ(form1().query_box().text(), U"An test") << "nothing was chosen";
    box.setFocus();
    box.end(false);
    QTest::keyClick(&box, Qt::Key_Down);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(form1().query_box().text(), U"An testsesame A");
    EXPECT_EQ(list.count(), 3) << "the list stays while it is walked through";
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_FALSE(list.isVisible());
    EXPECT_TRUE(box.hasFocus());
    EXPECT_EQ(box.text(), "An testsesame A");
    QTest::keyClick(&box, Qt::Key_Backspace);
    EXPECT_EQ(form1().query_box().text(), U"An testsesame ");
    box.selectAll();
    type("Form1.Text1(1)", "An dockword");
    EXPECT_FALSE(list.isVisible()) << "it is a command, though a longer one begins like it";
    form1().Timer3.set_enabled(true);
    QTest::keyClick(&box, Qt::Key_Backspace);
    EXPECT_FALSE(list.isVisible()) << "a run is on";
    form1().Timer3.set_enabled(false);
}

TEST_F(DesktopKeyboard, a_command_is_typed_whole_and_other_text_by_one_key_though_letters_are_keys)
{
    start();
    form1().dbresult = true;
    LineBox& box = find<LineBox>("Form1.Text1(1)");
    box.selectAll();
    type("Form1.Text1(1)", "An docket");
    EXPECT_EQ(form1().query_box().text(), U"An docket");
    EXPECT_FALSE(form1().comp);
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_F4);
    type("Form1.Text1(1)", "cat;e");
    EXPECT_EQ(form1().query_box().text(), U"cat;e");
    EXPECT_FALSE(box.property("keysAreCommands").toBool());
    EXPECT_TRUE(form1().dbresult) << "the table stays in work";
    for (int i = 0; i < 2; ++i) expect_box("确定");
    type("Form1.Text1(1)", "\x1b"); // the query goes on with keys
    type("Form1.Text1(1)", "c");
    EXPECT_EQ(form1().query_box().text(), U"cat;e");
    EXPECT_TRUE(form1().comp);
}

TEST_F(DesktopKeyboard, every_control_has_a_name_and_a_role)
{
    QAccessible::setActive(true); // a screen reader listens from the beginning
    start();
    for (QWidget* widget : desktop->main_window().findChildren<QWidget*>())
        if (widget->objectName().startsWith("Form1.") && dynamic_cast<const QLabel*>(widget) == nullptr) {
            const auto* heard = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(heard, nullptr);
            const bool has_name = widget->inherits("QGroupBox") ? !heard->text(QAccessible::Name).isEmpty()
                                                                : !widget->accessibleName().isEmpty();
            EXPECT_TRUE(has_name) << widget->objectName().toStdString();
            EXPECT_NE(heard->role(), QAccessible::Client) << widget->objectName().toStdString();
        }
    auto* const option = QAccessible::queryAccessibleInterface(&find("Form1.Option1"));
    EXPECT_EQ(option->role(), QAccessible::RadioButton);
    EXPECT_FALSE(option->state().checked);
    option->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(form1().Option1.value() && option->state().checked);
    form1().number_box().set_text(U"甲\r\n乙");
    click("Form1.Text1(2)");
    auto* const number = QAccessible::queryAccessibleInterface(&find("Form1.Text1(2)"));
    EXPECT_EQ(number->role(), QAccessible::EditableText);
    EXPECT_EQ(number->textInterface()->text(0, 4), "甲\r\n乙");
    number->textInterface()->addSelection(1, 1000); // which is more than there is
    EXPECT_EQ(form1().number_box().selected_text().view, U"\r\n乙");
    EXPECT_EQ(number->textInterface()->cursorPosition(), 4);
}

TEST_F(DesktopKeyboard, f1_opens_the_manual_where_the_clerk_is)
{
    start();
    QWidget& box = find("Form1.Text1(1)");
    const auto heading_after = [&](QWidget& at) {
        QTest::keyClick(&in_front(at), Qt::Key_F1);
        auto& manual = find<QTextBrowser>("manual");
        const QString heading = manual.textCursor().block().text();
        QTest::keyClick(&in_front(manual), Qt::Key_F1);
        EXPECT_FALSE(manual.isVisible()) << "the key also closes it";
        return heading;
    };
    for (const auto& [typed, heading] :
         {std::pair("An docket", "批量出单"), {"An appear", "设计器"}, {"x", "阅读与查寻"}}) {
        form1().query_box().set_text(from_qt(typed));
        EXPECT_TRUE(heading_after(box).contains(heading)) << typed;
    }
    click("Form1.Command6");
    EXPECT_TRUE(heading_after(box).contains("数据列"));
    click("Form1.Command3");
    EXPECT_TRUE(heading_after(find("Form4.Text1(0)")).contains("设计器"));
    QTest::keyClick(&in_front(find("Form4.Text1(0)")), Qt::Key_F6);
    EXPECT_TRUE(wait_until([&] { return box.hasFocus(); }));
}

TEST_F(DesktopKeyboard, the_keyboard_reaches_everything)
{
    std::string lines;
    for (int i = 0; i < 500; ++i) lines += "line " + std::to_string(i) + "\r\n";
    installation.write("coclus.txt", lines);
    start();
    QWidget& box = find("Form1.Text1(1)");
    TextWidget& pane = find<TextWidget>("Form1.RichTextBox2");
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(shown_lines(pane).front(), "line 1");
    QTest::keyClick(&box, Qt::Key_PageDown);
    EXPECT_EQ(shown_lines(pane).front(), QString("line %1").arg(pane.area().whole_rows()));
    QTest::keyClick(&box, Qt::Key_PageUp);
    QTest::keyClick(&box, Qt::Key_Up);
    EXPECT_EQ(shown_lines(pane).front(), "line 0");
    EXPECT_TRUE(box.hasFocus());
    QTest::keyClick(&box, Qt::Key_F6);
    EXPECT_TRUE(pane.hasFocus());
    QTest::keyClick(&pane, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(&find("findText"), "LINE 49");
    QTest::keyClick(&find("findText"), Qt::Key_Return);
    EXPECT_EQ(form1().RichTextBox2.selected_text().str(), U"line 49");
    QTest::keyClick(&find("findText"), Qt::Key_F3);
    QTest::keyClick(&find("findText"), Qt::Key_F3);
    EXPECT_EQ(form1().RichTextBox2.selection().start.offset(), lines.find("line 491"));
    QTest::keyClick(&find("findText"), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(form1().RichTextBox2.selection().start.offset(), lines.find("line 490"));
    EXPECT_EQ(find<QLabel>("findResult").text(), "2 / 11");
    EXPECT_FALSE(find("find").geometry().intersects(pane.viewport()->geometry().translated(pane.pos())))
        << "the bar hides no row";
    QTest::keyClick(find("find").findChild<QCheckBox*>(), Qt::Key_Escape); // which is no query
    EXPECT_TRUE(box.hasFocus());
    QTest::keyClick(&box, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(&find("findText"), Qt::Key_Escape);
    EXPECT_TRUE(box.hasFocus());
    const double height = pane.area().shown().front().row.height;
    const TextWidget& number = find<TextWidget>("Form1.Text1(2)");
    const double number_height = number.area().shown().front().row.height;
    QTest::keyClick(&box, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(pane.area().shown().front().row.height, height);
    EXPECT_EQ(number.area().shown().front().row.height, number_height) << "the number box is no pane";
    QTest::keyClick(&box, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(pane.area().shown().front().row.height, height);
    expect_file({});
    QTest::keyClick(&box, Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(all_answered());
    EXPECT_TRUE(wait_until([&] { return box.hasFocus(); }));
    QTest::keyClick(&box, Qt::Key_F8);
    EXPECT_TRUE(wait_until([&] { return find("Form3.Text1(5)").hasFocus(); }));
    QTest::keyClick(&find("Form3.Text1(5)"), Qt::Key_F8);
    EXPECT_TRUE(wait_until([&] { return box.hasFocus(); }));
    form1().comp = true;
    QTest::keyClick(&box, Qt::Key_F8);
    EXPECT_TRUE(wait_until([&] { return find("Form3.Text1(4)").hasFocus(); })) << "two tables are compared";
    QWidget& separator = in_front(find("Form1.Text1(2)"));
    separator.setFocus();
    QTest::keyClick(&separator, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&separator, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(form1().number_box().text(), U"\r\n") << "and no query begins";
}

TEST_F(DesktopKeyboard, a_folder_that_the_system_does_not_open_is_told)
{
    start();
    const QByteArray path = qgetenv("PATH");
    QWidget& box = in_front(find("Form1.Text1(1)"));
    for (const bool is_there : {true, false}) { // an opener that fails, and none
        drive_d.write("xdg-open", is_there ? "#!/bin/sh\nexit 4\n" : "");
        std::filesystem::permissions(drive_d.path() / "xdg-open", std::filesystem::perms(is_there ? 0700 : 0600));
        qputenv("PATH", drive_d.path().c_str());
        status().show_end({"运行结束", "/tmp/甲", {}});
        QTest::keyClick(&box, Qt::Key_E, Qt::ControlModifier);
        EXPECT_TRUE(wait_until([&] { return status().text() == "系统没有打开：/tmp/甲"; }))
            << status().text().toStdString();
        status().show_notice({});
    }
    qputenv("PATH", path);
}

TEST(CommandHelp, has_a_line_for_every_command)
{
    std::vector<std::u32string_view> helped;
    for (const CommandHelp& row : command_help) helped.push_back(row.command);
    const CommandTable commands = report_commands();
    for (const auto& row : commands.immediate) EXPECT_EQ(std::ranges::count(helped, row.text), 1) << to_utf8(row.text);
    for (const auto& row : commands.reports) EXPECT_EQ(std::ranges::count(helped, row.text), 1) << to_utf8(row.text);
}

} // namespace
} // namespace tarvik::test
