#include "tests/desktop/desktop_fixture.h"

#include "desktop/services/file_dialog.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QStyleHints>

namespace tarvik::test {
namespace {

using DesktopClerk = DesktopFixture;

const std::string utf8 = "\xef\xbb\xbf"; // the mark that says so
constexpr const char* table = "号\t名称\t城市和一个比下面每一个格都宽得多的列名\r\n1\tyq-r8808\tParis\r\n22\t光模块 "
                              "yq-xfp40km\tBrno\r\n333\tx\t\r\n";

double x_of(const TextWidget& pane, const QString& text)
{
    const TextArea& area = pane.area();
    for (const TextArea::ShownRow& shown : area.shown()) {
        Text line;
        area.lines().append_to(shown.row.start, shown.row.end - shown.row.start, line);
        const auto at = line.find(from_qt(text));
        if (at != Text::npos) return area.x_of(shown.row, shown.row.start + at);
    }
    ADD_FAILURE() << "not shown: " << text.toStdString();
    return -1;
}

TEST_F(DesktopClerk, a_split_lines_up_and_the_ruler_fills_the_box_of_column_numbers)
{
    installation.write("coclus.txt", utf8 + table);
    start();
    form1().query_box().set_text(U"r");
    for (int i = 0; i < 2; ++i) expect_box("确定");
    type("Form1.Text1(1)", "\x1b");
    form1().query_box().set_text(U"x");
    type("Form1.Text1(1)", "\x1b");
    type("Form1.Text1(1)", "q");
    TextWidget& pane = find<TextWidget>("Form1.RichTextBox3");
    EXPECT_EQ(x_of(pane, "suf(0,2)"), x_of(pane, "suf(1,2)"));
    auto& ruler = dynamic_cast<Ruler&>(*pane.findChild<QWidget*>("ruler"));
    EXPECT_TRUE(ruler.isVisible());
    EXPECT_EQ(ruler.left_of(2), x_of(pane, "suf(0,2)"));
    EXPECT_GT(ruler.left_of(4) - ruler.left_of(3),
              ruler.fontMetrics().horizontalAdvance("3 城市和一个比下面每一个格都宽得多的列名"));

    EXPECT_EQ(find<QLabel>("heading(5)").text(), "号");
    find("Form3.Text1(5)").setFocus();
    QTest::mouseClick(&ruler, Qt::LeftButton, {}, QPoint(qRound(ruler.left_of(2)) + 4, 3));
    EXPECT_EQ(program().form3.Text1[5].text(), U"2");
    EXPECT_EQ(find<QLabel>("heading(5)").text(), "名称");
    EXPECT_EQ(program().form3.Text1[0].text(), U"5") << "no other box";
}

TEST_F(DesktopClerk, the_status_line_tells_what_is_in_work)
{
    installation.write("报表.txt", utf8 + "a\tb\nc\td\n");
    start();
    open("报表.txt");
    EXPECT_TRUE(status().text().startsWith("报表.txt  ·  UTF-8  ·  LF 行尾  ·  10 字"))
        << status().text().toStdString();
    EXPECT_EQ(find<QLabel>("keys").text(), "隔离符 。↵ · F7 放回");
    form1().query_box().set_text(U"a");
    expect_box("确定");
    type("Form1.Text1(1)", "\x1b");
    EXPECT_TRUE(status().text().contains("suF 1 行，单表")) << status().text().toStdString();
    EXPECT_TRUE(find<QLabel>("keys").text().contains("q 拆列"));
    EXPECT_TRUE(find("Form1.Text1(1)").property("keysAreCommands").toBool());
    click("Form1.Option1");
    EXPECT_TRUE(status().text().contains("已选“现代汉语”"));
    type("Form1.RichTextBox3", "x");
    EXPECT_TRUE(status().text().contains("已修改"));
    QTest::mouseClick(&desktop->main_window(), Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(status().text(), "已恢复默认设置");
    EXPECT_FALSE(find("Form1.Text1(1)").property("keysAreCommands").toBool());
}

TEST_F(DesktopClerk, a_run_is_stopped_after_the_sheet_in_hand_and_tells_what_it_left)
{
    copy_docket_samples();
    start();
    run_docket();
    EXPECT_TRUE(wait_until([&] { return form1().sheetno >= 3; }));
    EXPECT_TRUE(status().text().startsWith("运行中：")) << status().text().toStdString();
    EXPECT_TRUE(find("progress").isVisible() && desktop->main_window().windowTitle().contains("start:"));
    const std::size_t files = program().run.files.size();
    QTest::keyClick(&in_front(find("Form1.Text1(1)")), Qt::Key_Period, Qt::ControlModifier);
    EXPECT_TRUE(wait_until([&] { return !form1().Timer3.enabled(); }));
    EXPECT_GE(program().run.files.size(), files) << "nothing that was saved goes";
    EXPECT_LT(program().run.files.size(), 20U);
    EXPECT_TRUE(status().text().startsWith("已按要求停止  ·  存了")) << status().text().toStdString();
    const QString left =
        QString("%1 个关键字没有轮到").arg(30 - program().run.files.size() - program().run.passed.size());
    EXPECT_TRUE(status().text().contains(left)) << status().text().toStdString();
    EXPECT_TRUE(status().text().contains(QString::fromStdString((drive_d.path() / "out").string())));
    EXPECT_FALSE(find("stop").isVisible() || find("progress").isVisible());
    QTest::keyClick(&find("Form1.Text1(1)"), Qt::Key_L, Qt::ControlModifier);
    auto& list = find<QListWidget>("runList");
    EXPECT_EQ(static_cast<std::size_t>(list.count()), program().run.files.size() + program().run.passed.size());
    QTest::keyClick(&in_front(list), Qt::Key_Escape);
}

TEST_F(DesktopClerk, the_end_of_a_run_tells_why_it_stopped)
{
    copy_docket_samples();
    start();
    run_docket();
    EXPECT_TRUE(wait_until([&] { return program().run.files.size() >= 2; }));
    std::filesystem::remove(installation.path() / "z5.xlsx");
    expect_box("确定");
    EXPECT_TRUE(wait_until([&] { return !form1().Timer3.enabled(); }));
    const QString text = status().text();
    const QString missing = path_of("z5.xlsx");
    EXPECT_TRUE(text.startsWith("运行停止：") && text.contains(missing)) << text.toStdString();
    EXPECT_TRUE(text.contains("存了 ") && text.contains("没有出单") && text.contains("没有轮到")) << text.toStdString();
    EXPECT_EQ(program().run.files.size() + program().run.passed.size() + program().run.not_reached, 30U);
}

TEST_F(DesktopClerk, a_command_that_is_done_at_once_tells_where_its_file_lies)
{
    for (const char* name : {"3158.txt", "z9.xlsx"}) copy_sample(name);
    start();
    open("3158.txt");
    find<LineBox>("Form1.Text1(1)").selectAll();
    for (int run = 0; run < 2; ++run) {
        retype("An wodben");
        expect_input("d:\\out");
        expect_box("确定");
        status().show_end({});
        type("Form1.Text1(1)", "\r");
        EXPECT_TRUE(status().text().contains("存了 1 个文件")) << status().text().toStdString();
    }
    EXPECT_TRUE(find<QLabel>("keys").text().contains("q 拆列"));
}

TEST_F(DesktopClerk, a_double_click_takes_a_code_or_a_cell_and_a_third_the_line)
{
    installation.write("coclus.txt", utf8 + "光模块 甲\tyq-r8808\tParis" + std::string(500, 'x') + "\r\n");
    start();
    TextWidget& pane = find<TextWidget>("Form1.RichTextBox2");
    const int y = qRound(pane.area().shown().front().row.height / 2);
    const auto double_click = [&](const QString& text) {
        QTest::mouseDClick(pane.viewport(), Qt::LeftButton, {}, QPoint(qRound(x_of(pane, text)) + 3, y));
        return form1().RichTextBox2.selected_text().str();
    };
    EXPECT_EQ(double_click("r8808"), U"yq-r8808");
    QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    EXPECT_EQ(double_click("光"), U"光模块 甲");
    QTest::mousePress(pane.viewport(), Qt::LeftButton, {}, QPoint(8, y));
    EXPECT_TRUE(form1().RichTextBox2.selected_text().str().starts_with(U"光模块 甲\tyq-r8808\tParis"));
    EXPECT_EQ(pane.area().left(), 0) << "a long line is not scrolled away";
}

TEST_F(DesktopClerk, results_are_counted_and_lead_to_their_page_and_the_separator_comes_back)
{
    installation.write("a.txt", "plum one.\r\nplum two.\r\nplum three.\r\n");
    start();
    form1().page_size_box().set_text(U"12");
    open("a.txt");
    form1().query_box().set_text(U"plum");
    click("Form1.Text1(5)");
    form1().number_box().set_text(U".\r\n");
    expect_box("是");
    type("Form1.Text1(1)", "\r");
    EXPECT_EQ(form1().number_box().text(), U"3");
    QWidget& box = in_front(find("Form1.Text1(1)"));
    for (const char* number : {"第 2 处，共 3 处", "第 3 处，共 3 处"}) {
        QTest::keyClick(&box, Qt::Key_Right, Qt::AltModifier);
        EXPECT_TRUE(status().text().startsWith(number)) << status().text().toStdString();
    }
    EXPECT_TRUE(status().text().contains("在第 1 页")) << status().text().toStdString();
    // The first step into the other direction shows the same result again.
    for (const auto& [key, number] : {std::pair(Qt::Key_Left, "第 2 处"), {Qt::Key_Right, "第 3 处"}}) {
        for (int i = 0; i < 2; ++i) QTest::keyClick(&box, key, Qt::AltModifier);
        EXPECT_TRUE(status().text().startsWith(number)) << status().text().toStdString();
    }
    QTest::keyClick(&box, Qt::Key_F5);
    EXPECT_EQ(form1().pageno, 1);
    QTest::keyClick(&in_front(box), Qt::Key_F7);
    EXPECT_EQ(form1().number_box().text(), U".\r\n");
    EXPECT_EQ(user_settings().value("query/separator").toString(), ".\r\n") << "it is at hand tomorrow";
    user_settings().remove("query/separator");
}

TEST_F(DesktopClerk, a_word_of_the_pane_is_looked_up_and_the_words_are_walked)
{
    for (const char* name : {"牛津字典A.TXT", "牛津字典B.TXT"}) copy_sample(name);
    installation.write("a.txt", "they accept a backup\r\n");
    start();
    open("a.txt");
    TextWidget& pane = find<TextWidget>("Form1.RichTextBox2");
    const int y = qRound(pane.area().shown().front().row.height / 2);
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, Qt::ControlModifier,
                      QPoint(qRound(x_of(pane, "accept")) + 8, y));
    EXPECT_EQ(form1().query_box().text(), U"accept");
    EXPECT_TRUE(form1().Option2.value());
    EXPECT_NE(form1().RichTextBox1.text().str().find(U"accept"), Text::npos);
    desktop->main_window().look_up("backup");
    EXPECT_EQ(form1().query_box().text(), U"backup");
    QTest::keyClick(&in_front(find("Form1.Text1(1)")), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(form1().query_box().text(), U"accept");
    QTest::keyClick(&in_front(find("Form1.Text1(1)")), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(form1().query_box().text(), U"backup");
    program().platform.clipboard.clear(); // the click has copied the word
}

TEST_F(DesktopClerk, the_end_of_a_growing_file_is_followed_where_that_is_chosen)
{
    installation.write("log.txt", "one\r\n");
    user_settings().setValue("view/follows", true);
    start();
    user_settings().remove("view/follows");
    open("log.txt");
    QTest::qWait(2500); // two looks
    std::string text = "one\r\n";
    for (int i = 0; i < 200; ++i) text += "more\r\n";
    installation.write("log.txt", text + "last\r\n");
    EXPECT_TRUE(wait_until([&] { return form1().RichTextBox2.text().contains(U"last"); }));
    EXPECT_TRUE(shown_lines(find<TextWidget>("Form1.RichTextBox2")).contains("last"));
}

TEST_F(DesktopClerk, a_question_whose_no_starts_work_wants_an_answer)
{
    start();
    EXPECT_TRUE(program().form1.RichTextBox2.visible());
    form1().dbresult = true;
    const Message question{U"是，表示比较，否，表示查寻。", U"一个相当长的标题，盒子至少要有它那么宽才好",
                           Buttons::YesNo};
    expect([&](QDialog& box) {
        EXPECT_GT(box.width(), box.fontMetrics().horizontalAdvance(box.windowTitle()));
        const QWidget& pane = find("Form1.RichTextBox2");
        EXPECT_FALSE(box.geometry().contains(pane.mapToGlobal(pane.rect().center()))) << "the pane stays in view";
        QTest::keyClick(&box, Qt::Key_Escape);
        box.close();
        EXPECT_TRUE(box.isVisible());
        QTest::keyClick(&box, Qt::Key_N);
    });
    EXPECT_EQ(program().platform.dialogs.message(question), Answer::No);
    expect([](QDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(program().platform.dialogs.message({U"是否退出？", U"t", Buttons::YesNo}), Answer::No);
}

TEST_F(DesktopClerk, a_file_is_dropped_found_without_its_ending_and_offered_again)
{
    installation.write("a.txt", "dropped\r\n");
    start();
    QMimeData dragged;
    dragged.setUrls({QUrl::fromLocalFile(path_of("a.txt"))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&desktop->main_window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&desktop->main_window(), &drop);
    EXPECT_EQ(form1().RichTextBox2.text(), TextView(U"dropped\r\n\r\n"));
    installation.write("b.txt", "typed\r\n");
    find("Form1.Command1(0)").setEnabled(false);
    desktop->open(path_of("a.txt"));
    find("Form1.Command1(0)").setEnabled(true);
    open("b"); // asks, whatever was dropped while the button did nothing
    EXPECT_EQ(form1().RichTextBox2.text(), TextView(U"typed\r\n\r\n"));
    expect([](QDialog& box) {
        auto* recent = box.findChild<QComboBox*>("recent");
        ASSERT_NE(recent, nullptr);
        EXPECT_TRUE(recent->itemText(2).endsWith("/a.txt")) << recent->itemText(2).toStdString();
        emit recent->activated(2);
    });
    click("Form1.Command1(0)");
    EXPECT_EQ(form1().RichTextBox2.text(), TextView(U"dropped\r\n\r\n"));
    std::filesystem::create_directory(installation.path() / "z");
    expect([](QDialog& box) {
        const auto& names = *box.findChild<QAbstractItemView*>("treeView");
        const auto name = [&](int row) { return names.model()->index(row, 0, names.rootIndex()).data().toString(); };
        EXPECT_TRUE(QTest::qWaitFor([&] { return !name(2).isEmpty() && name(0) == "z"; }))
            << "folders are ahead of files, and not " << name(0).toStdString();
        box.reject();
    });
    click("Form1.Command1(0)");
    for (const char* own : {"betweenp.txt", "牛津字典A.TXT", "现代汉语词典.txt"}) EXPECT_TRUE(is_own_file(own));
    EXPECT_FALSE(is_own_file("3139.txt"));
}

} // namespace
} // namespace tarvik::test
