#include "tests/desktop/desktop_fixture.h"

#include "desktop/services/file_dialog.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMenu>

namespace tarvik::test {
namespace {

using DesktopInput = DesktopFixture;

void compose(QWidget& widget, const QString& preedit, const QString& committed)
{
    QInputMethodEvent event(preedit, {});
    event.setCommitString(committed);
    QApplication::sendEvent(&widget, &event);
}
QPoint place(const TextWidget& widget, std::size_t offset)
{
    const TextArea& area = widget.area();
    const Row row = area.rows().row_at(offset);
    for (const TextArea::ShownRow& shown : area.shown())
        if (shown.row.start == row.start) return {qRound(area.x_of(row, offset)), qRound(shown.y + row.height / 2)};
    return {};
}

void pick(const QString& entry)
{
    auto* menu = dynamic_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions())
        if (action->text() == entry) action->trigger();
    menu->close();
}

TEST_F(DesktopInput, letters_that_an_input_method_composes_are_no_keys)
{
    installation.write("coclus.txt", "one\r\n");
    start();
    form1().dbresult = true;
    const Text table = form1().RichTextBox3.text().str();
    LineBox& query = find<LineBox>("Form1.Text1(1)");
    TextWidget& number = find<TextWidget>("Form1.Text1(2)");
    query.setFocus();
    query.selectAll();
    for (QWidget* box : std::initializer_list<QWidget*>{&query, &number}) {
        if (box == &number) number.select(0, form1().number_box().text().size());
        for (const char* preedit : {"c", "ceq'z;", "ce", "", "ce'shi"}) compose(*box, preedit, {});
        form1().page_box().set_text(U"7");
        program().platform.screen.refresh(); // as a run does meanwhile
        compose(*box, {}, "测试");
    }
    EXPECT_EQ(form1().query_box().text(), U"测试");
    EXPECT_EQ(query.text(), "测试");
    EXPECT_EQ(form1().number_box().text(), U"测试");
    EXPECT_EQ(shown_lines(number).front(), "测试");
    EXPECT_FALSE(form1().comp || form1().notcap);
    EXPECT_TRUE(form1().dbresult);
    EXPECT_EQ(form1().RichTextBox3.text().str(), table);
    const QWidget& asked = number;
    EXPECT_FALSE(asked.inputMethodQuery(Qt::ImCursorRectangle).toRectF().isEmpty()) << "where candidates show";
}

TEST_F(DesktopInput, a_pane_is_edited_like_any_text)
{
    installation.write("coclus.txt", "one\r\ntwo\r\n");
    start();
    TextWidget& pane = find<TextWidget>("Form1.RichTextBox2");
    type("Form1.RichTextBox2", "x\ry");
    EXPECT_EQ(form1().RichTextBox2.text(), TextView(U"x\r\nyone\r\ntwo\r\n"));
    QTest::keyClick(&pane, Qt::Key_Backspace);
    QTest::keyClick(&pane, Qt::Key_Backspace); // CR LF goes as one
    EXPECT_EQ(form1().RichTextBox2.text(), TextView(U"xone\r\ntwo\r\n"));
    QTest::keyClick(&pane, Qt::Key_Down);
    QTest::keyClick(&pane, Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(form1().RichTextBox2.selected_text().view, U"wo");
    compose(pane, {}, "二");
    EXPECT_EQ(shown_lines(pane), (QStringList{"xone", "t二", ""}));
    for (int i = 0; i < 6; ++i) QTest::keyClick(&pane, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form1().RichTextBox2.text(), TextView(U"one\r\ntwo\r\n"));
    type("Form1.RichTextBox2", "x");
    installation.write("a.txt", "another one\r\n");
    open("a.txt");
    QTest::keyClick(&pane, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form1().RichTextBox2.text(), TextView(U"another one\r\n\r\n")) << "no edit of another text is undone";
    type("Form1.Text1(1)", "12");
    auto& box = find<QLineEdit>("Form1.Text1(1)");
    box.home(false);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier, "\x7f"); // some systems give the key a character
    QApplication::sendEvent(&box, &key);
    EXPECT_EQ(box.text(), "2");
}

TEST_F(DesktopInput, what_is_selected_is_copied_on_release_and_the_menu_pastes_it)
{
    installation.write("coclus.txt", "one two\r\nthree\r\n");
    start();
    TextWidget& pane = find<TextWidget>("Form1.RichTextBox2");
    QTest::mousePress(pane.viewport(), Qt::LeftButton, {}, place(pane, 4));
    QTest::mouseMove(pane.viewport(), place(pane, 12));
    EXPECT_EQ(program().platform.clipboard.text(), U"");
    QTest::mouseRelease(pane.viewport(), Qt::LeftButton, {}, place(pane, 12));
    EXPECT_EQ(program().platform.clipboard.text(), U"two\r\nthr");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "two\nthr") << "other programs get their line ends";

    QTest::mousePress(pane.viewport(), Qt::RightButton, {}, place(pane, 1));
    EXPECT_EQ(form1().RichTextBox2.selected_text().view, U"two\r\nthr") << "a right click keeps the selection";
    pick("_复制");
    QTest::mouseClick(&find("Form1.Text1(4)"), Qt::LeftButton);
    QTest::mousePress(&find("Form1.Text1(1)"), Qt::RightButton);
    EXPECT_TRUE(form1().menuonquery);
    find<LineBox>("Form1.Text1(1)").selectAll();
    pick("_粘贴");
    EXPECT_EQ(form1().query_box().text(), U"two\r\nthr");
    EXPECT_EQ(program().platform.clipboard.text(), U"") << "a paste empties the clipboard";
    program().platform.clipboard.set_text(U"other");
    find<LineBox>("Form1.Text1(1)").selectAll();
    QTest::mouseClick(&find("Form1.Text1(1)"), Qt::LeftButton);
    EXPECT_EQ(form1().query_box().text(), U"two\r\nthr") << "the menu took the release that would have pasted";

    QGuiApplication::clipboard()->setText("a\nb");
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, {}, place(pane, 2));
    EXPECT_EQ(program().platform.clipboard.text(), U"") << "a plain click selects nothing";
    QTest::mouseDClick(pane.viewport(), Qt::LeftButton, {}, place(pane, 5));
    QTest::mouseRelease(pane.viewport(), Qt::LeftButton, {}, place(pane, 5));
    EXPECT_EQ(program().platform.clipboard.text(), U"two");
    const double height = pane.area().shown().front().row.height;
    QTest::mousePress(pane.viewport(), Qt::MiddleButton, Qt::ControlModifier, place(pane, 1));
    EXPECT_GT(pane.area().shown().front().row.height, 2 * height) << "all of the pane is enlarged";
}

TEST_F(DesktopInput, what_another_program_copied_is_pasted_with_our_line_ends_and_a_cell_without_its_own)
{
    start();
    QGuiApplication::clipboard()->setText("\na\r\nb\n\nc\rd");
    EXPECT_EQ(program().platform.clipboard.text(), U"\r\na\r\nb\r\n\r\nc\rd");
    QTest::keyClick(&find("Form1.RichTextBox2"), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(form1().RichTextBox2.text().contains(U"\r\na\r\nb"));
    LineBox& box = find<LineBox>("Form1.Text1(1)");
    box.selectAll();
    QGuiApplication::clipboard()->setText("4900318295\n");
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form1().query_box().text(), U"4900318295");
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form1().query_box().text(), U"查寻条件");
}

TEST_F(DesktopInput, the_query_box_takes_as_much_of_a_report_as_it_can_show)
{
    constexpr std::size_t most = 10'000;
    start();
    LineBox& box = find<LineBox>("Form1.Text1(1)");
    form1().query_box().set_text(U"ab");
    click("Form1.Text1(5)");
    box.setCursorPosition(1);
    const Text report = Text(most, U'\U00020000') + U"x"; // of characters that the toolkit counts twice
    QGuiApplication::clipboard()->setText(to_qt(report));
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form1().query_box().text(), U"a" + report.substr(0, most - 2) + U"b") << "what stood there stays";
    EXPECT_TRUE(status().text().contains("最多放")) << status().text().toStdString();
    status().show_notice({});
    form1().query_box().set_text(report); // as the menu pastes
    click("Form1.Text1(5)");
    EXPECT_EQ(form1().query_box().text(), report.substr(0, most));
    EXPECT_EQ(box.text(), to_qt(form1().query_box().text()));
    EXPECT_TRUE(status().text().contains("最多放")) << status().text().toStdString();
}

TEST(RecentFiles, are_the_last_twelve_and_each_once_over_the_programs_end)
{
    const TemporaryFolder folder;
    RecentFiles recent("first");
    const auto choose = [&](const std::string& name) {
        folder.write(name, "");
        recent.add(QString::fromStdString((folder.path() / name).string()));
        return QString::fromStdString((folder.path() / name).string());
    };
    for (int i = 0; i < 14; ++i) choose(std::to_string(i));
    const QString five = choose("5");
    choose("x.xlsx");
    EXPECT_EQ(RecentFiles("first").files({"*.xlsx", "*.xls"}).size(), 1) << "only what can be opened";
    EXPECT_EQ(RecentFiles("first").folder({"*.txt"}), five.chopped(2)) << "no such file was chosen yet";
    const QStringList files = RecentFiles("first").files({"?", "??"});
    EXPECT_EQ(files.size(), 11) << "beside the workbook";
    EXPECT_TRUE(files[0] == five && files[1].endsWith("/13") && files.count(five) == 1);
}

TEST(FileFilters, are_those_of_the_toolkit)
{
    EXPECT_EQ(name_patterns(U"表*.xls|*.xls|所有文件*.*|*.*"), (QStringList{"*.xls", "*.xlsx", "*"}));
    EXPECT_EQ(name_filters(U"a|*.x;*.y|所有文件*.*|*.*"), (QStringList{"a (*.x *.y)", "所有文件*.* (*)"}));
}

} // namespace
} // namespace tarvik::test
