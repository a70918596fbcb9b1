#pragma once

#include "desktop/look/qt_text.h"
#include "desktop/services/file_dialog.h"
#include "platform/files/paths.h"
#include "platform/platform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QGridLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>

#include <algorithm>
#include <functional>
#include <utility>

namespace tarvik {

/// Takes every busy pointer away while a box waits for the user, and the window that it stands over back to the front
/// when the box has gone, so that keys reach it at once.
/// `over` is the window of the box before: directly behind that one no window is active yet.
class BoxOver {
public:
    explicit BoxOver(QPointer<QWidget>& over)
    {
        if (QWidget* active = QApplication::activeWindow()) over = active;
        else if (!over || !over->isVisible()) over = main_window();
        window_ = over;
        for (; QGuiApplication::overrideCursor(); ++hidden_) QGuiApplication::restoreOverrideCursor();
    }
    ~BoxOver()
    {
        for (; hidden_ > 0; --hidden_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        if (window_) window_->activateWindow();
    }
    BoxOver(const BoxOver&) = delete;
    BoxOver& operator=(const BoxOver&) = delete;
    QWidget* window() const { return window_; }

private:
    // Nothing of the program is on the screen before start-up ends; then a box has no window to stand over.
    static QWidget* main_window()
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible() && window->isWindow() && window->objectName() == "Form1") return window;
        return nullptr;
    }

    QPointer<QWidget> window_;
    int hidden_ = 0;
};

/// Below what should stay in view, as far as the screen goes.
inline void place_clear(QDialog& box, const QRect& clear)
{
    if (clear.isEmpty()) return;
    constexpr int gap = 12, title_bar = 36;
    const QSize size = box.size();
    const QRect screen = box.screen()->availableGeometry();
    const int below = clear.bottom() + gap + title_bar;
    const int left = clear.left() + (clear.width() - size.width()) / 2;
    box.move(std::clamp(left, screen.left(), std::max(screen.left(), screen.right() - size.width())),
             std::clamp(below, screen.top(), std::max(screen.top(), screen.bottom() - size.height() - title_bar)));
}

/// A message, wide enough for its title, that Y and N answer where Yes and No are offered.
class MessageWindow final : public QMessageBox {
public:
    MessageWindow(const Message& message, const QString& shown, const QRect& clear, QWidget* parent)
        : QMessageBox(picture(message.icon), to_qt(message.title), shown, offered(message.buttons), parent),
          clear_(clear), must_answer_(must_answer(message))
    {
        setTextFormat(Qt::PlainText);
        setTextInteractionFlags(Qt::TextSelectableByMouse);
        for (const auto& [which, name] : {std::pair(Yes, "YES"), {No, "NO"}, {Cancel, "Cancel"}})
            if (QAbstractButton* const named = button(which); named && text().contains(QString(name) + "按钮"))
                named->setText(QString("%1（%2）").arg(named->text().remove(QRegularExpression("\\(&.\\)")), name));
        if (auto* grid = dynamic_cast<QGridLayout*>(layout())) {
            const int title = fontMetrics().horizontalAdvance(windowTitle()) + room_beside_title;
            grid->addItem(new QSpacerItem(std::max(title, text_width()), 0), grid->rowCount(), 0, 1,
                          grid->columnCount());
        }
    }

protected:
    // The box takes its size when it shows.
    void showEvent(QShowEvent* event) override
    {
        QMessageBox::showEvent(event);
        if (!event->spontaneous()) place_clear(*this, clear_);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if (must_answer_ && event->key() == Qt::Key_Escape) return;
        const auto answer = event->key() == Qt::Key_Y ? Yes : event->key() == Qt::Key_N ? No : NoButton;
        if (QAbstractButton* const meant = button(answer)) meant->click();
        else QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override
    {
        if (must_answer_) event->ignore();
        else QMessageBox::closeEvent(event);
    }

private:
    // Short lines stay whole at every size of the font, long ones do not run across the screen.
    int text_width() const
    {
        constexpr int most_characters = 32;
        int widest = 0;
        for (const QString& line : text().split('\n')) widest = std::max(widest, fontMetrics().horizontalAdvance(line));
        return std::min(widest + 2 * fontMetrics().height(), most_characters * fontMetrics().height());
    }

    // Both tables are in the order of the program's own kinds.
    static QMessageBox::StandardButtons offered(Buttons buttons)
    {
        const QMessageBox::StandardButtons sets[] = {Ok, Ok | Cancel, Yes | No, Yes | No | Cancel};
        return sets[static_cast<std::size_t>(buttons)];
    }
    static QMessageBox::Icon picture(tarvik::Icon icon)
    {
        constexpr QMessageBox::Icon pictures[] = {NoIcon, Information, Question, Warning, Critical};
        return pictures[static_cast<std::size_t>(icon)];
    }
    // A box whose text says what No does starts work with No: it wants one of its answers, and nothing else ends it.
    static bool must_answer(const Message& message)
    {
        const TextView text = message.text;
        return message.buttons == Buttons::YesNo && (text.contains(U"否，") || text.contains(U"否："));
    }

    static constexpr int room_beside_title = 120; // the title bar's icon and buttons
    QRect clear_;
    bool must_answer_;
};

/// The real boxes, over the window that the user works in.
class DesktopDialogs final : public Dialogs {
public:
    struct Surroundings {
        /// Brings the windows up to date ahead of every box; throws nothing.
        std::function<void()> before = [] {};
        /// What boxes should leave in view, on the screen.
        std::function<QRect()> keep_clear = [] { return QRect(); };
        /// Folders that stand at the side of file dialogs.
        std::function<QStringList()> places = [] { return QStringList(); };
    };
    /// File dialogs begin in `folder` while no file has been chosen. A path that is offered on one of `drives` is
    /// offered where it leads.
    DesktopDialogs(const QString& folder, DriveMap drives)
        : folder_(folder), recent_(folder), drives_(std::move(drives))
    {
    }
    void set_surroundings(Surroundings surroundings) { around_ = std::move(surroundings); }

    Answer message(const Message& message) override
    {
        const QString shown = with_one_separator(message.text);
        if (message.buttons == Buttons::OK) last_told_ = shown;
        around_.before();
        const BoxOver over(over_);
        MessageWindow box(message, shown, around_.keep_clear(), over.window());
        switch (box.exec()) {
        case QMessageBox::Ok: return Answer::OK;
        case QMessageBox::Yes: return Answer::Yes;
        case QMessageBox::No: return Answer::No;
        default: return Answer::Cancel;
        }
    }
    Text input(TextView title, TextView prompt, TextView preset) override
    {
        around_.before();
        const BoxOver over(over_);
        QInputDialog box(over.window());
        box.setWindowTitle(to_qt(title));
        box.setLabelText(with_one_separator(prompt));
        box.setTextValue(to_qt(preset));
        const bool is_on_drive = preset.size() > 2 && preset[0] < 0x80 && preset[1] == U':';
        const auto drive = is_on_drive ? drives_.find(static_cast<char>(preset[0])) : drives_.end();
        if (drive != drives_.end()) {
            box.setLabelText(box.labelText() + QString("\n这台电脑没有可以写入的 %1 盘，改为存到您的“文档”文件夹：")
                                                   .arg(QChar(drive->first).toUpper()));
            box.setTextValue(to_qt(text_of(drive->second)) + to_qt(preset.substr(2)));
        }
        box.resize(std::max(box.sizeHint().width(), box.fontMetrics().averageCharWidth() * 60),
                   box.sizeHint().height());
        place_clear(box, around_.keep_clear());
        return box.exec() == QDialog::Accepted ? from_qt(box.textValue()) : Text();
    }
    std::optional<Text> open_file(TextView filter) override
    {
        if (const QString next = std::exchange(next_, {}); !next.isEmpty()) {
            recent_.add(next);
            return from_qt(QDir::toNativeSeparators(next));
        }
        return choose_file(filter, false);
    }
    std::optional<Text> save_file(TextView filter) override { return choose_file(filter, true); }

    /// The next question for a file to open is answered by this one, without a box.
    void open_next(const QString& path) { next_ = path; }

    /// The text of the last box that could only be confirmed.
    const QString& last_told() const { return last_told_; }

private:
    // A text puts "\\" behind the installation folder, which is the system's own path.
    QString with_one_separator(TextView text) const
    {
        return lines_to_qt(text).replace(folder_ + '\\', folder_ + QDir::separator());
    }
    std::optional<Text> choose_file(TextView filter, bool save)
    {
        around_.before();
        const BoxOver over(over_);
        QList<QUrl> places{QUrl::fromLocalFile(QDir::homePath())};
        for (const QString& place : around_.places())
            if (QFileInfo(place).isDir()) places += QUrl::fromLocalFile(place);
        // Reports and the workbooks of a run lie in different places: each kind of file begins at its own.
        const QStringList patterns = name_patterns(filter);
        FileDialog box(over.window(), save, filter, recent_.folder(patterns), recent_.files(patterns), places);
        if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
        recent_.add(box.selectedFiles().front());
        return from_qt(QDir::toNativeSeparators(box.selectedFiles().front()));
    }

    Surroundings around_;
    QString folder_;
    RecentFiles recent_;
    DriveMap drives_;
    QString next_;
    QString last_told_;
    QPointer<QWidget> over_; // what the last box stood over
};

} // namespace tarvik
