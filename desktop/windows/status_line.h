#pragma once

#include "desktop/services/system.h"
#include "desktop/text_view/text_accessible.h"
#include "mainwindow/mainwindow.h"

#include <QAccessible>
#include <QDir>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

/// What the main window says of the work in hand.
namespace tarvik {

/// The open document, the table in work and what else decides over the next key. `edited`: the user has changed the
/// pane that is shown.
QString state_text(const Program& program, bool edited);

/// The result of a query in the document that the result pane shows.
struct ShownResult {
    std::int64_t number; ///< from 1
    double page;         ///< of the document, from 0, where it begins
};
std::optional<ShownResult> shown_result(const Program& program);

/// How far the run in progress has come.
QString run_text(Program& program);

/// Where the user lets the runs store, as the system names it; empty where the system has no such place.
QString output_folder(const Program& program);

/// How a run ended.
struct RunEnd {
    QString text;
    QString folder;      ///< where its files really lie; empty when it made none
    QStringList details; ///< files and the keys that made no sheet, a line each
};
/// `wished`: the user has stopped it. `told`: what the last box said, which is why a run stops by itself.
RunEnd run_end(const Program& program, bool wished, QString told);

/// The keys that are commands at present, empty while there are none.
QString key_hint(const Form1& form1);

/// A slim line along the upper edge of a window that shows how far a long piece of work has come.
class ProgressLine final : public QProgressBar {
public:
    explicit ProgressLine(QWidget& window) : QProgressBar(&window)
    {
        setObjectName("progress");
        setAccessibleName("进度");
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setRange(0, all);
        setTextVisible(false);
        setStyleSheet("QProgressBar { border: 0; background: palette(midlight) }"
                      "QProgressBar::chunk { background: palette(link) }");
        hide();
    }

    // Both are parts of 1; a negative number ends the display. The work in hand goes before the batch that it is part
    // of.

    void show_work(double done) { show_part(work_, done); }
    void show_batch(double done) { show_part(batch_, done); }

private:
    static constexpr int thickness = 4, all = 10'000;
    void show_part(double& kind, double done)
    {
        if (std::exchange(kind, done) == done) return;
        const double part = work_ >= 0 ? work_ : batch_;
        setVisible(part >= 0);
        setValue(qRound(all * std::clamp(part, 0.0, 1.0)));
        setGeometry(0, 0, parentWidget()->width(), thickness);
        raise();
    }
    double work_ = -1, batch_ = -1;
};

/// The line along the lower edge of the main window. It says one thing at a time: a run in progress, else something
/// that was passed over a moment ago, else how the last run ended, else what is open and in work.
class StatusLine final : public QWidget {
public:
    /// `stop` is called when the user wishes to stop the run.
    StatusLine(std::function<void()> stop, QWidget& window)
        : QWidget(&window), stop_("做完手上这张就停", this), menu_("菜单 F10", this)
    {
        setObjectName("status");
        setProperty(accessible_role, QAccessible::StatusBar);
        setAttribute(Qt::WA_NoMousePropagation);
        for (const auto& [button, name] : {std::pair(&stop_, "stop"), {&menu_, "menu"}}) {
            button->setObjectName(name);
            button->setFocusPolicy(Qt::NoFocus);
            button->setMinimumSize(1, 1);
        }
        stop_.setToolTip("手上的一张单做完后停止运行，已存的文件都保留");
        stop_.hide();
        connect(&stop_, &QPushButton::clicked, this, [this, stop = std::move(stop)] {
            stop_.setEnabled(false);
            stop();
        });
        notice_time_.setSingleShot(true);
        notice_time_.setInterval(notice_milliseconds);
        connect(&notice_time_, &QTimer::timeout, this, [this] { show_notice({}); });
    }

    /// What stands ahead of everything else; an empty text ends it.
    void show_mark(const QString& mark)
    {
        if (std::exchange(mark_, mark) != mark) changed();
    }
    void show_state(const QString& text)
    {
        if (std::exchange(state_, text) == text) return;
        if (!end_.text.isEmpty() && text != state_at_end_) end_ = {};
        changed();
    }
    void show_notice(const QString& text)
    {
        notice_ = text.simplified();
        if (!notice_.isEmpty()) notice_time_.start();
        changed();
    }
    /// An empty text ends the display.
    void show_run(const QString& text)
    {
        if (std::exchange(run_, text) == text) return;
        if (stop_.isHidden()) stop_.setEnabled(true);
        stop_.setVisible(!run_.isEmpty());
        if (!run_.isEmpty()) notice_.clear();
        changed();
    }
    /// Stays until the state changes.
    void show_end(RunEnd end)
    {
        end_ = last_end_ = std::move(end);
        state_at_end_ = state_;
        changed();
    }

    QString text() const
    {
        const QString mark = mark_.isEmpty() ? QString() : mark_ + "  ·  ";
        for (const QString* text : {&run_, &notice_, &end_.text})
            if (!text->isEmpty()) return mark + *text;
        return mark + state_;
    }
    /// Wishes the run in progress to stop.
    void stop() { stop_.click(); }
    /// Opens a file or folder by the program that the system has for it, and says so where there is none.
    void show_by_system(const QString& path)
    {
        open_by_system(path, [this, path] { show_notice("系统没有打开：" + QDir::toNativeSeparators(path)); });
    }
    /// Opens the folder of the run that ended last.
    void open_end()
    {
        if (last_end_.folder.isEmpty()) return show_notice("还没有存过文件");
        show_by_system(last_end_.folder);
    }
    /// Lists in a window of its own what that run made and what it did not.
    void list_end()
    {
        if (last_end_.details.isEmpty()) return show_notice("还没有运行过，或没有可列的文件和关键字");
        auto* const list = new QListWidget(window());
        list->setWindowFlags(Qt::Dialog);
        list->setObjectName("runList");
        list->setAttribute(Qt::WA_DeleteOnClose);
        list->setWindowTitle(last_end_.text);
        list->setAccessibleName("运行的清单");
        list->addItems(last_end_.details);
        list->setCurrentRow(0);
        list->resize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 24);
        connect(new QShortcut(Qt::Key_Escape, list), &QShortcut::activated, list, &QWidget::close);
        list->show();
        list->activateWindow();
    }
    /// The button at the right end that opens the menu.
    QPushButton& menu_button() { return menu_; }
    /// What a click on the line does while it says where a result stands.
    std::function<void()> result_clicked = [] {};

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
        painter.setPen(palette().color(QPalette::WindowText));
        const int right = (stop_.isHidden() ? menu_ : stop_).x() - edge;
        const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, right - edge);
        painter.drawText(QRect(edge, 0, right - edge, height()), Qt::AlignLeft | Qt::AlignVCenter, shown);
    }
    void resizeEvent(QResizeEvent*) override
    {
        int right = width() - edge;
        for (QPushButton* button : {&menu_, &stop_}) {
            const int room = fontMetrics().horizontalAdvance(button->text()) + 3 * edge;
            button->setGeometry(right - room, 1, room, height() - 2);
            right -= room + edge;
        }
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (event->button() != Qt::LeftButton) return;
        if (shows_end() && !end_.folder.isEmpty()) open_end();
        else if (text().endsWith(state_)) result_clicked();
    }

private:
    static constexpr int notice_milliseconds = 8000, edge = 8;
    void changed()
    {
        const bool ended = shows_end();
        setToolTip((QStringList(text()) + (ended ? end_.details.mid(0, 40) : QStringList())).join('\n'));
        setCursor(ended && !end_.folder.isEmpty() ? Qt::PointingHandCursor : Qt::ArrowCursor);
        setAccessibleName(text());
        update();
    }
    bool shows_end() const { return !end_.text.isEmpty() && text().endsWith(end_.text); }
    QString mark_, state_, notice_, run_, state_at_end_;
    RunEnd end_, last_end_; // the first while it shows
    QTimer notice_time_;
    QPushButton stop_, menu_;
};

} // namespace tarvik
