#pragma once

#include "desktop/windows/status_text.h"

#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace tarvik {

/// The line along the lower edge of the main window. It says one thing at a time: a run in progress, else something
/// that was passed over a moment ago, else how the last run ended, else what is open and in work.
class StatusLine final : public QWidget {
public:
    /// `stop` is called when the user wishes to stop the run.
    StatusLine(std::function<void()> stop, QWidget& window);

    /// What stands ahead of everything else; an empty text ends it.
    void show_mark(const QString& mark);
    void show_state(const QString& text);
    void show_notice(const QString& text);
    /// An empty text ends the display.
    void show_run(const QString& text);
    /// Stays until the state changes.
    void show_end(RunEnd end);

    QString text() const;
    /// Wishes the run in progress to stop.
    void stop() { stop_.click(); }
    /// Opens a file or folder by the program that the system has for it, and says so where there is none.
    void show_by_system(const QString& path);
    /// Opens the folder of the run that ended last.
    void open_end();
    /// Lists in a window of its own what that run made and what it did not.
    void list_end();
    /// The button at the right end that opens the menu.
    QPushButton& menu_button() { return menu_; }
    /// What a click on the line does while it says where a result stands.
    std::function<void()> result_clicked = [] {};

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void changed();
    bool shows_end() const;
    QString mark_, state_, notice_, run_, state_at_end_;
    RunEnd end_, last_end_; // the first while it shows
    QTimer notice_time_;
    QPushButton stop_, menu_;
};

} // namespace tarvik
