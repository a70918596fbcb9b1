#include "platform/files/paths.h"
#include "scripts/task_files.h"
#include "tests/desktop/desktop_fixture.h"
#include "tests/support/places.h"
#include "tests/support/work_names.h"

#include <gmock/gmock.h>

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include <cstdlib>
#include <random>

namespace tarvik {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class DesktopTasks : public test::DesktopFixture {
protected:
    void record_key() { QTest::keyClick(&in_front(find("Form1")), Qt::Key_F9, Qt::ShiftModifier); }
    void keep_as(const QString& name)
    {
        expect_input(name);
        record_key();
        ASSERT_TRUE(wait_until([this] { return all_answered(); }));
    }
    void keep(const Text& name, const std::vector<std::string>& lines) { keep_task(program().platform, name, lines); }
    std::string script(TextView name) { return files().read(task_path(name)); }
    Files& files() { return program().platform.files; }
    std::string status_text() { return status().text().toStdString(); }
    /// Presses a button of the list of tasks.
    void press(const QString& button)
    {
        QTest::keyClick(&in_front(find("Form1")), Qt::Key_F9);
        QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton);
    }
    bool play_to_the_end()
    {
        press("play");
        return wait_until([this] { return all_answered() && !desktop->player().plays(); });
    }

    /// What the player prints for a script, over files of its own.
    std::string play(std::string lines)
    {
        lines = test::replaced(lines, drive_d.path().string(), (there.path() / "d").string());
        std::filesystem::create_directory(there.path() / "d");
        std::filesystem::copy(samples.path(), there.path() / "installation", std::filesystem::copy_options::recursive);
        there.write("s.play", lines);
        const auto [out, errors, status] = test::play_script(there.path() / "s.play", there.path());
        return out + errors + (status == 0 ? "held\n" : "failed\n");
    }
    test::TemporaryFolder samples, there;
};

} // namespace

TEST_F(DesktopTasks, record_a_run_and_repeat_it)
{
    copy_docket_samples();
    std::filesystem::copy(installation.path(), samples.path(),
                          std::filesystem::copy_options::overwrite_existing | std::filesystem::copy_options::recursive);
    start();
    record_key();
    EXPECT_THAT(status_text(), HasSubstr("录制中"));
    run_docket();
    ASSERT_TRUE(wait_until([this] { return form1().window.caption().ends_with(U" ERROR !"); }))
        << "three need no docket";
    keep_as("月报");
    EXPECT_THAT(status_text(), testing::Not(HasSubstr("录制中")));

    const std::string recorded = script(U"月报");
    EXPECT_THAT(recorded, HasSubstr("task\nfile \"3139.txt\"\nclick Command1(0)\nset Text1(1) \"An docket\"\n"
                                    "input \"d:\\\\out\"\nmessage "));
    EXPECT_THAT(recorded,
                HasSubstr("reply ok\ntype Text1(1) \"\\r\"\nrun\nexpect savedcount 27\nexpect runstopped False\n"));
    EXPECT_THAT(play(recorded), testing::EndsWith("held\n"));

    EXPECT_TRUE(play_to_the_end());
    EXPECT_THAT(status_text(), HasSubstr("任务“月报”已经做完"));
    EXPECT_EQ(program().run.files.size(), 27U);
}

TEST_F(DesktopTasks, stop_where_something_differs_and_ask_for_holes)
{
    start();
    const std::pair<std::vector<std::string>, std::string> differences[] = {
        {{"task", "message \"other\"", "click Command1(1)", "set Text1(1) \"behind\""}, "第 6 行"},
        {{"task", "file \"none.txt\"", "click Command1(0)", "set Text1(1) \"behind\""}, "没有这个文件"},
        {{"task", "ask \"名称\"", "set Text1(1) \"behind\""}, "没有给出“名称”"},
    };
    for (const auto& [lines, difference] : differences) {
        keep(U"other", lines);
        if (lines[1].starts_with("ask")) expect([](QDialog& box) { box.reject(); });
        expect_box("确定");
        EXPECT_TRUE(play_to_the_end());
        EXPECT_THAT(boxes.back().toStdString(), HasSubstr(difference));
        EXPECT_NE(form1().query_box().text(), U"behind");
        std::filesystem::remove(files().resolve(task_path(U"other")));
    }
    keep(U"asks", {"task", "ask \"名称\" \"旧\"", "set Text1(1) \"{名称}1\""});
    expect([](QDialog& box) { box.reject(); });
    press("night");
    expect_input("新");
    QTest::keyClick(&in_front(find("Form1")), Qt::Key_F9);
    QTest::keyClick(in_front(find("tasks")).focusWidget(), Qt::Key_Return); // the keyboard alone starts it
    EXPECT_TRUE(wait_until([this] { return all_answered() && !desktop->player().plays(); }));
    EXPECT_EQ(form1().query_box().text(), U"新1");
    QTest::keyClick(&in_front(find("Form1")), Qt::Key_F9);
    std::filesystem::remove(files().resolve(task_path(U"asks")));
    expect_box("确定"); // the list is older than the folder
    QTest::keyClick(in_front(find("tasks")).focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(all_answered());
}

TEST_F(DesktopTasks, are_changed_in_their_list)
{
    start();
    expect_box("确定");
    press("rename");
    EXPECT_THAT(boxes.back().toStdString(), HasSubstr("还没有任务"));
    keep(U"a", {"task", "set Text1(1) \"x\""});
    keep(U"c", {"task"});

    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", ""); // nothing there opens it
    press("edit");
    EXPECT_TRUE(wait_until([this] { return status().text().endsWith("/a.play"); })) << status_text();
    qputenv("PATH", path);

    expect_input("c");
    expect_box("确定");
    press("rename");
    EXPECT_THAT(boxes.back().toStdString(), HasSubstr("没有覆盖"));
    expect_input("b");
    press("rename");
    EXPECT_THAT(task_names(files()), ElementsAre(U"b", U"c"));

    find<QListWidget>("task_list").setCurrentRow(0);
    expect([](QDialog& box) { box.accept(); });
    expect_input("名称");
    press("hole");
    EXPECT_THAT(script(U"b"), HasSubstr("task\nask \"名称\" \"x\"\nset Text1(1) \"{名称}\"\n"));

    for (const NightLine& night : night_lines(program_file().parent_path() / "tarvik-play", U"b")) {
        expect_box("复制：" + to_qt(night.timetable));
        press("night");
        EXPECT_EQ(program().platform.clipboard.text(), night.line);
    }

    for (const char* answer : {"否", "是"}) {
        EXPECT_THAT(task_names(files()), ElementsAre(U"b", U"c"));
        expect_box(answer);
        press("remove");
    }
    EXPECT_THAT(task_names(files()), ElementsAre(U"c"));
}

TEST_F(DesktopTasks, are_kept_when_the_window_closes_while_one_is_recorded)
{
    start();
    press("record");
    type("Form1.Text1(1)", "a");
    expect_box("是");
    expect([](QDialog& box) { box.reject(); }); // no name
    expect_box("否");                           // it is not let go
    expect_input("晚");
    find("Form1").close();
    EXPECT_TRUE(wait_until([this] { return all_answered(); }));
    EXPECT_TRUE(program().ended && !find("Form1").isVisible());
    EXPECT_THAT(script(U"晚"), testing::EndsWith("task\nset Text1(1) \"a\"\nfocus Text1(1)\n"));
}

// Keys and buttons at random, as the window's own queue has them, do the same in the player.
TEST_F(DesktopTasks, play_what_was_done_at_random)
{
    for (const test::TemporaryFolder* folder : {&installation, &samples}) {
        folder->write("coclus.txt", "1\r\n");
        folder->write("table.txt", "编号\t名称\r\n1\tab\r\n2\tac查寻\r\n");
    }
    start();
    const char* const seed = std::getenv("TARVIK_SEED");
    std::mt19937 random(seed ? static_cast<unsigned>(std::atoi(seed)) : 7);
    answer_others = [&](QDialog& box) {
        if (auto* message = dynamic_cast<QMessageBox*>(&box)) {
            const auto buttons = message->buttons();
            buttons[static_cast<qsizetype>(random() % static_cast<unsigned>(buttons.size()))]->click();
        } else if (auto* dialog = dynamic_cast<QFileDialog*>(&box); dialog && random() % 2 == 0) {
            const auto& folder = dialog->acceptMode() == QFileDialog::AcceptSave ? drive_d.path() : installation.path();
            choose_file(box, QString::fromStdString((folder / "table.txt").string()));
        } else box.reject();
    };
    desktop->recorder().start();
    const QStringList keys{"a", "查寻", "\r", "\x1b", "q", "c", "e", "z1", "?"};
    const QStringList buttons{"Form1.Command1(0)", "Form1.Command1(0)", "Form1.Command1(1)", "Form1.Command1(2)",
                              "Form1.Command1(4)", "Form1.Command7(0)", "Form1.Command8(0)", "Form1.Command9(1)",
                              "Form1.Command6",    "Form1.Option1",     "Form1.Option3",     "Form1.Command2(8)"};
    for (int i = 0; i < 80; ++i) {
        const QString box = QString("Form1.Text1(%1)").arg(random() % 3 == 0 ? 2 : 1);
        const auto any = [&random](const QStringList& list) {
            return list[static_cast<qsizetype>(random() % list.size())];
        };
        switch (random() % 5) {
        case 0: click(any(buttons)); break;
        case 1: QTest::keyClick(&find(box), random() % 2 == 0 ? Qt::Key_Backspace : Qt::Key_Home); break;
        case 2:
            QTest::keyClick(&find(box), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&find(box), random() % 2 == 0 ? Qt::Key_C : Qt::Key_V, Qt::ControlModifier);
            break;
        default: type(box, any(keys));
        }
    }
    std::string lines;
    for (const std::string& line : desktop->recorder().finish()) lines += line + "\n";
    std::string seen;
    for (const std::string& name : test::work_names(program())) {
        if (name == "clipboard") continue; // the system's, until the program reads it
        lines += "show " + name + "\n";
        seen += name + " = " + resolve(program(), name).read().shown + "\n";
    }
    const std::string played = play(lines), first_shown = seen.substr(0, seen.find('='));
    ASSERT_NE(played.find(first_shown), std::string::npos) << lines << played;
    EXPECT_EQ(played.substr(played.find(first_shown)), seen + "held\n") << lines;
    EXPECT_EQ(test::files_below(installation.path()), test::files_below(there.path() / "installation"));
    EXPECT_EQ(test::files_below(drive_d.path()), test::files_below(there.path() / "d"));
}

} // namespace tarvik
