#pragma once

#include "desktop/desktop.h"
#include "desktop/look/qt_text.h"
#include "tests/support/places.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTest>

#include <deque>

namespace tarvik::test {

/// The whole desktop over an installation folder of its own, with a user at keyboard and mouse. Boxes that open are
/// answered in order by what was laid ready; one that nobody expects fails the test and is closed.
class DesktopFixture : public testing::Test {
public:
    DesktopFixture()
    {
        QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { look_for_box(); });
        watch_.start(5);
    }
    ~DesktopFixture() override
    {
        watch_.stop();
        EXPECT_TRUE(answers_.empty()) << "a box that was expected did not come";
    }

protected:
    /// Lays a sample file of the installation into the folder.
    void copy_sample(const std::string& name)
    {
        std::filesystem::copy_file(std::filesystem::path(built_installation()) / name, installation.path() / name);
    }
    void start()
    {
        desktop = std::make_unique<Desktop>(installation.path(), DriveMap{{'d', drive_d.path()}});
        desktop->start();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&desktop->main_window()));
    }

    QString path_of(const std::string& name) const
    {
        return QString::fromStdString((installation.path() / name).string());
    }
    /// Opens a document of the installation folder.
    void open(const std::string& name)
    {
        expect_file(path_of(name));
        click("Form1.Command1(0)");
    }
    /// Types in place of what the query box holds.
    void retype(const QString& keys)
    {
        find<LineBox>("Form1.Text1(1)").selectAll();
        type("Form1.Text1(1)", keys);
    }
    void copy_docket_samples()
    {
        for (const char* name : {"3137.txt", "3138.txt", "3139.txt", "z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx"})
            copy_sample(name);
    }
    /// Begins "An docket" into d:\out, a sheet as soon as the one before is done.
    void run_docket()
    {
        open("3139.txt");
        retype("An docket");
        expect_input("d:\\out");
        expect_box("确定");
        form1().Timer3.set_interval(1);
        type("Form1.Text1(1)", "\r");
    }

    Program& program() { return desktop->program(); }
    Form1& form1() { return desktop->program().form1; }
    StatusLine& status() { return desktop->main_window().status(); }

    template <typename Widget = QWidget>
    Widget& find(const QString& name)
    {
        for (QWidget* widget : QApplication::allWidgets())
            if (auto* const found = dynamic_cast<Widget*>(widget); found && widget->objectName() == name) return *found;
        throw std::runtime_error("no such widget: " + name.toStdString());
    }
    /// Presses and releases the left button in the middle of a control.
    void click(const QString& name)
    {
        QWidget& widget = find(name);
        auto* area = dynamic_cast<QAbstractScrollArea*>(&widget);
        QTest::mouseClick(area ? area->viewport() : &widget, Qt::LeftButton);
    }
    /// Types into a control that gets the focus: "\r" is Enter, "\x1b" Esc.
    void type(const QString& name, const QString& keys)
    {
        QWidget& widget = find(name);
        widget.activateWindow();
        widget.setFocus();
        for (const QChar key : keys) {
            if (key == '\r') QTest::keyClick(&widget, Qt::Key_Return);
            else if (key == '\x1b') QTest::keyClick(&widget, Qt::Key_Escape);
            else QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(key), Qt::NoModifier);
        }
    }
    /// Brings a widget's window to the front, as a shortcut needs it.
    QWidget& in_front(QWidget& widget)
    {
        widget.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(widget.window())) << widget.objectName().toStdString();
        return widget;
    }
    /// Lets time pass until the condition holds. Gives false when it does not within ten seconds.
    static bool wait_until(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10'000); }

    /// The next box is answered by the button with this caption.
    void expect_box(const QString& button)
    {
        answers_.push_back([button](QDialog& box) { press(box, button); });
    }
    void expect_input(const QString& text)
    {
        answers_.push_back([text](QDialog& box) {
            dynamic_cast<QInputDialog&>(box).setTextValue(text);
            press(box, "确定");
        });
    }
    /// The next file dialog gets this path; with an empty one it is cancelled.
    void expect_file(const QString& path)
    {
        answers_.push_back([path](QDialog& box) {
            if (path.isEmpty()) box.reject();
            else choose_file(box, path);
        });
    }
    static void choose_file(QDialog& box, const QString& path)
    {
        auto& dialog = dynamic_cast<QFileDialog&>(box);
        // Else it chooses a file of that name in another folder, too.
        dialog.setDirectory(QFileInfo(path).absolutePath());
        box.findChild<QLineEdit*>("fileNameEdit")->setText(path);
        press(box, dialog.acceptMode() == QFileDialog::AcceptSave ? "保存" : "打开");
    }
    /// The next box gets what the user does with it.
    void expect(std::function<void(QDialog&)> user) { answers_.push_back(std::move(user)); }
    /// What the user does with boxes that nothing was laid ready for.
    std::function<void(QDialog&)> answer_others;
    bool all_answered() const { return answers_.empty(); }
    /// Title and text of the boxes so far.
    QStringList boxes;

    TemporaryFolder installation, drive_d;
    std::unique_ptr<Desktop> desktop;

private:
    using Reply = std::function<void(QDialog&)>;
    static void press(QDialog& box, const QString& caption)
    {
        for (auto* button : box.findChildren<QAbstractButton*>())
            if (button->text().remove(QRegularExpression("\\(&.\\)|（.*）")) == caption) { // without the key for it
                button->click();
                return;
            }
        ADD_FAILURE() << "no button " << caption.toStdString();
        box.reject();
    }
    void look_for_box()
    {
        auto* box = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible()) return;
        const auto* message = dynamic_cast<QMessageBox*>(box);
        boxes += message ? message->windowTitle() + "|" + message->text() : box->windowTitle();
        if (answers_.empty() && answer_others) return answer_others(*box);
        if (answers_.empty()) {
            ADD_FAILURE() << "nobody expects the box " << boxes.back().toStdString();
            box->reject();
            return;
        }
        const Reply answer = std::move(answers_.front());
        answers_.pop_front();
        answer(*box);
    }
    std::deque<Reply> answers_;
    QTimer watch_;
};

/// The lines that a text widget shows, as it lays them out.
inline QStringList shown_lines(const TextWidget& widget)
{
    QStringList lines;
    for (const TextArea::ShownRow& shown : widget.area().shown()) {
        Text text;
        widget.area().lines().append_to(shown.row.start, shown.row.end - shown.row.start, text);
        lines += to_qt(text);
    }
    return lines;
}

} // namespace tarvik::test
