#include "scripts/task_files.h"
#include "tests/desktop/desktop_fixture.h"
#include "tests/support/places.h"

#include <gmock/gmock.h>

#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

namespace tarvik {

namespace {

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
    std::string script(TextView name) { return program().platform.files.read(task_path(name)); }
    /// What the player prints for a script, over files of its own.
    std::string play(const std::string& lines)
    {
        const test::TemporaryFolder there;
        std::filesystem::copy(samples.path(), there.path() / "installation", std::filesystem::copy_options::recursive);
        there.write("s.play", lines);
        const std::string at = there.path().string();
        const std::string command = test::built_installation() + "/tarvik-play --install " + at +
                                    "/installation --drive d=" + at + "/d " + at + "/s.play >" + at + "/out 2>" + at +
                                    "/err";
        const int status = std::system(command.c_str());
        return there.read("out") + there.read("err") + (status == 0 ? "held\n" : "failed\n");
    }
    test::TemporaryFolder samples;
};

} // namespace

TEST_F(DesktopTasks, record_a_run_and_repeat_it)
{
    copy_docket_samples();
    std::filesystem::copy(installation.path(), samples.path(),
                          std::filesystem::copy_options::overwrite_existing | std::filesystem::copy_options::recursive);
    start();
    record_key();
    EXPECT_THAT(status().text().toStdString(), HasSubstr("录制中"));
    run_docket();
    ASSERT_TRUE(wait_until([this] { return form1().window.caption().ends_with(U"!"); }));
    keep_as("月报");
    EXPECT_THAT(status().text().toStdString(), testing::Not(HasSubstr("录制中")));

    const std::string recorded = script(U"月报");
    EXPECT_THAT(recorded, HasSubstr("task\nfile \"3139.txt\"\nclick Command1(0)\nset Text1(1) \"An docket\"\n"
                                    "input \"d:\\\\out\"\nmessage "));
    EXPECT_THAT(recorded,
                HasSubstr("reply ok\ntype Text1(1) \"\\r\"\nrun\nexpect savedcount 27\nexpect runstopped False\n"));
    EXPECT_THAT(play(recorded), testing::EndsWith("held\n"));

    QTest::keyClick(&in_front(find("Form1")), Qt::Key_F9);
    find<QPushButton>("play").click();
    EXPECT_TRUE(wait_until([this] { return desktop->player().plays(); }));
    EXPECT_TRUE(wait_until([this] { return !desktop->player().plays(); }));
    EXPECT_THAT(status().text().toStdString(), HasSubstr("任务“月报”已经做完"));
    EXPECT_EQ(program().run.files.size(), 27U);
}

TEST_F(DesktopTasks, stop_where_a_message_differs)
{
    start();
    keep_task(program().platform, U"other",
              {"task", "message \"other\"", "click Command1(1)", "set Text1(1) \"behind\""});
    QTest::keyClick(&in_front(find("Form1")), Qt::Key_F9);
    expect_box("确定");
    find<QPushButton>("play").click();
    EXPECT_TRUE(wait_until([this] { return all_answered() && !desktop->player().plays(); }));
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_THAT(boxes[0].toStdString(), HasSubstr("第 6 行"));
    EXPECT_NE(form1().query_box().text(), U"behind");
}

// Keys and buttons at random, as the window's own queue has them, do the same in the player.
TEST_F(DesktopTasks, play_what_was_done_at_random)
{
    samples.write("coclus.txt", "1\r\n");
    start();
    std::mt19937 random(7);
    answer_others = [&random](QDialog& box) {
        if (auto* message = dynamic_cast<QMessageBox*>(&box)) {
            const auto buttons = message->buttons();
            buttons[static_cast<qsizetype>(random() % static_cast<unsigned>(buttons.size()))]->click();
        } else box.reject();
    };
    desktop->recorder().start();
    const QStringList keys{"a", "查寻", "\r", "\x1b", "q", "c", "e", "z1", "?"};
    const QStringList buttons{"Form1.Command1(1)", "Form1.Command1(2)", "Form1.Command7(0)", "Form1.Command8(0)",
                              "Form1.Command9(1)", "Form1.Command6",    "Form1.Option1",     "Form1.Command2(8)"};
    for (int i = 0; i < 60; ++i) {
        const QString box = QString("Form1.Text1(%1)").arg(random() % 3 == 0 ? 2 : 1);
        const auto any = [&random](const QStringList& list) {
            return list[static_cast<qsizetype>(random() % list.size())];
        };
        switch (random() % 4) {
        case 0: click(any(buttons)); break;
        case 1: QTest::keyClick(&find(box), random() % 2 == 0 ? Qt::Key_Backspace : Qt::Key_Home); break;
        default: type(box, any(keys));
        }
    }
    std::string lines;
    for (const std::string& line : desktop->recorder().finish()) lines += line + "\n";
    const ControlDirectory controls(program());
    const Names names(program(), controls);
    std::string seen;
    for (const char* name : {"Text1(1).Text", "Text1(2).Text", "RichTextBox1.Text", "RichTextBox3.Text", "clipboard",
                             "Option1.Value", "comp", "dbresult", "showdata", "notcap", "resultcount", "sufcount",
                             "answer", "needle", "focusquery", "focusnumber", "pages(0)", "hits(0)", "suf(0,1)"}) {
        lines += "show " + std::string(name) + "\n";
        seen += std::string(name) + " = " + printed(names.resolve(name).read()) + "\n";
    }
    EXPECT_THAT(play(lines), testing::EndsWith(seen + "held\n")) << lines;
}

} // namespace tarvik
