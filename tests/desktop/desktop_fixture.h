#pragma once

#include "desktop/desktop.h"
#include "desktop/look/qt_text.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QTest>

#include <deque>

namespace tarvik::test {

/// The whole desktop over an installation folder of its own, with a user at keyboard and mouse. Boxes that open are
/// answered in order by what was laid ready; one that nobody expects fails the test and is closed.
class DesktopFixture : public testing::Test {
public:
    DesktopFixture();
    ~DesktopFixture() override;

protected:
    /// Lays a sample file of the installation into the folder.
    void copy_sample(const std::string& name);
    void start();

    QString path_of(const std::string& name) const { return path_in(installation, name); }
    static QString path_in(const TemporaryFolder& folder, const std::string& name)
    {
        return QString::fromStdString((folder.path() / name).string());
    }
    /// Opens a document of the installation folder.
    void open(const std::string& name);
    /// Types in place of what the query box holds.
    void retype(const QString& keys);
    void copy_docket_samples();
    /// Begins "An docket" into d:\out, a sheet as soon as the one before is done.
    void run_docket();

    Program& program() { return desktop->program(); }
    Form1& form1() { return desktop->program().form1; }
    StatusLine& status() { return desktop->main_window().status(); }

    template <typename Widget = QWidget>
    Widget& find(const QString& name)
    {
        QWidget* found = find_widget(name);
        if (!dynamic_cast<Widget*>(found)) throw std::runtime_error("no such widget: " + name.toStdString());
        return dynamic_cast<Widget&>(*found);
    }
    /// Presses and releases the left button in the middle of a control.
    void click(const QString& name);
    /// Types into a control that gets the focus: "\r" is Enter, "\x1b" Esc.
    void type(const QString& name, const QString& keys);
    /// Brings a widget's window to the front, as a shortcut needs it.
    QWidget& in_front(QWidget& widget);
    /// Lets time pass until the condition holds. Gives false when it does not within ten seconds.
    bool wait_until(const std::function<bool()>& condition);

    /// The next box is answered by the button with this caption.
    void expect_box(const QString& button);
    void expect_input(const QString& text);
    /// The next file dialog gets this path; with an empty one it is cancelled.
    void expect_file(const QString& path);
    static void choose_file(QDialog& file_dialog, const QString& path);
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
    static QWidget* find_widget(const QString& name);
    void look_for_box();
    std::deque<Reply> answers_;
    QTimer watch_;
};

/// The lines that a text widget shows, as it lays them out.
QStringList shown_lines(const TextWidget& widget);

} // namespace tarvik::test
