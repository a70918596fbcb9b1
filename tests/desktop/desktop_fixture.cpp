#include "tests/desktop/desktop_fixture.h"

#include "tests/support/places.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRegularExpression>

namespace tarvik::test {

namespace {

constexpr int watch_interval = 5;
constexpr int patience = 10'000;

void press(QDialog& box, const QString& caption)
{
    for (auto* button : box.findChildren<QAbstractButton*>())
        if (button->text().remove(QRegularExpression("\\(&.\\)|（.*）")) == caption) { // without the key for it
            button->click();
            return;
        }
    ADD_FAILURE() << "no button " << caption.toStdString();
    box.reject();
}

} // namespace

DesktopFixture::DesktopFixture()
{
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { look_for_box(); });
    watch_.start(watch_interval);
}

DesktopFixture::~DesktopFixture()
{
    watch_.stop();
    EXPECT_TRUE(answers_.empty()) << "a box that was expected did not come";
}

void DesktopFixture::copy_sample(const std::string& name)
{
    std::filesystem::copy_file(std::filesystem::path(built_installation()) / name, installation.path() / name);
}

void DesktopFixture::start()
{
    desktop = std::make_unique<Desktop>(installation.path(), DriveMap{{'d', drive_d.path()}});
    desktop->start();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&desktop->main_window()));
}

void DesktopFixture::open(const std::string& name)
{
    expect_file(path_of(name));
    click("Form1.Command1(0)");
}

void DesktopFixture::retype(const QString& keys)
{
    find<LineBox>("Form1.Text1(1)").selectAll();
    type("Form1.Text1(1)", keys);
}

void DesktopFixture::copy_docket_samples()
{
    for (const char* name : {"3137.txt", "3138.txt", "3139.txt", "z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx"})
        copy_sample(name);
}

void DesktopFixture::run_docket()
{
    open("3139.txt");
    retype("An docket");
    expect_input("d:\\out");
    expect_box("确定");
    form1().Timer3.set_interval(1);
    type("Form1.Text1(1)", "\r");
}

QWidget* DesktopFixture::find_widget(const QString& name)
{
    for (QWidget* widget : QApplication::allWidgets())
        if (widget->objectName() == name) return widget;
    return nullptr;
}

void DesktopFixture::click(const QString& name)
{
    QWidget& widget = find(name);
    auto* area = dynamic_cast<QAbstractScrollArea*>(&widget);
    QTest::mouseClick(area ? area->viewport() : &widget, Qt::LeftButton);
}

void DesktopFixture::type(const QString& name, const QString& keys)
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

QWidget& DesktopFixture::in_front(QWidget& widget)
{
    widget.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(widget.window())) << widget.objectName().toStdString();
    return widget;
}

bool DesktopFixture::wait_until(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, patience);
}

void DesktopFixture::look_for_box()
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

void DesktopFixture::expect_box(const QString& button)
{
    answers_.push_back([button](QDialog& box) { press(box, button); });
}

void DesktopFixture::expect_input(const QString& text)
{
    answers_.push_back([text](QDialog& box) {
        dynamic_cast<QInputDialog&>(box).setTextValue(text);
        press(box, "确定");
    });
}

void DesktopFixture::choose_file(QDialog& box, const QString& path)
{
    auto& dialog = dynamic_cast<QFileDialog&>(box);
    dialog.setDirectory(QFileInfo(path).absolutePath()); // else it chooses a file of that name in another folder, too
    box.findChild<QLineEdit*>("fileNameEdit")->setText(path);
    press(box, dialog.acceptMode() == QFileDialog::AcceptSave ? "保存" : "打开");
}

void DesktopFixture::expect_file(const QString& path)
{
    answers_.push_back([path](QDialog& box) {
        if (path.isEmpty()) box.reject();
        else choose_file(box, path);
    });
}

QStringList shown_lines(const TextWidget& widget)
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
