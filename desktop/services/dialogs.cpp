#include "desktop/services/dialogs.h"

#include "desktop/look/busy_cursor.h"
#include "desktop/look/qt_text.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>

namespace tarvik {

namespace {

struct ButtonRow {
    QMessageBox::StandardButton button;
    Answer answer;
};
constexpr ButtonRow button_rows[] = {
    {QMessageBox::Ok, Answer::OK},
    {QMessageBox::Yes, Answer::Yes},
    {QMessageBox::No, Answer::No},
    {QMessageBox::Cancel, Answer::Cancel},
};

QMessageBox::StandardButtons offered(Buttons buttons)
{
    switch (buttons) {
    case Buttons::OKCancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo: return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    default: return QMessageBox::Ok;
    }
}

QMessageBox::Icon picture(Icon icon)
{
    switch (icon) {
    case Icon::Information: return QMessageBox::Information;
    case Icon::Question: return QMessageBox::Question;
    case Icon::Exclamation: return QMessageBox::Warning;
    case Icon::Critical: return QMessageBox::Critical;
    default: return QMessageBox::NoIcon;
    }
}

// Nothing of the program is on the screen before start-up ends; then a box has no window to stand over.
QWidget* window_in_use()
{
    QWidget* active = QApplication::activeWindow();
    if (active) return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->isWindow() && window->objectName() == "Form1") return window;
    return nullptr;
}

// Takes the window that a box stands over back to the front when the box has gone, so that keys reach it at once.
class BoxOver {
public:
    BoxOver() : window_(window_in_use()) {}
    ~BoxOver()
    {
        if (window_) window_->activateWindow();
    }
    BoxOver(const BoxOver&) = delete;
    BoxOver& operator=(const BoxOver&) = delete;
    QWidget* window() const { return window_; }

private:
    const QPointer<QWidget> window_;
    const IdleCursor idle_;
};

} // namespace

Answer DesktopDialogs::message(const Message& message)
{
    before_();
    const BoxOver over;
    QMessageBox box(picture(message.icon), to_qt(message.title), lines_to_qt(message.text), offered(message.buttons),
                    over.window());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    const int pressed = box.exec();
    for (const ButtonRow& row : button_rows)
        if (row.button == pressed) return row.answer;
    return Answer::Cancel;
}

Text DesktopDialogs::input(TextView title, TextView prompt, TextView preset)
{
    before_();
    const BoxOver over;
    QInputDialog box(over.window());
    box.setWindowTitle(to_qt(title));
    box.setLabelText(lines_to_qt(prompt));
    box.setTextValue(to_qt(preset));
    box.resize(std::max(box.sizeHint().width(), 520), box.sizeHint().height());
    return box.exec() == QDialog::Accepted ? from_qt(box.textValue()) : Text();
}

std::optional<Text> DesktopDialogs::choose_file(TextView filter, bool save)
{
    before_();
    const BoxOver over;
    QFileDialog box(over.window(), save ? "保存" : "打开", folder_);
    box.setNameFilters(name_filters(filter));
    box.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    box.setOption(QFileDialog::DontConfirmOverwrite); // the program asks before it replaces a file
    box.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (QGuiApplication::platformName() == "offscreen") box.setOption(QFileDialog::DontUseNativeDialog);
    if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
    folder_ = box.directory().absolutePath();
    return from_qt(box.selectedFiles().front());
}

QStringList name_filters(TextView filter)
{
    const QStringList parts = to_qt(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        patterns.replace(';', ' ').replace("*.*", "*");
        filters += parts[i] + " (" + patterns + ")";
    }
    return filters;
}

} // namespace tarvik
