#pragma once

#include "desktop/front/task_player.h"
#include "desktop/windows/status_line.h"

#include <QDialog>
#include <QListWidget>

namespace tarvik {

/// The list of the tasks and everything done with them: recording, playing, keeping.
class TaskWindow final : public QDialog {
public:
    TaskWindow(Front& front, TaskPlayer& player, StatusLine& status, QWidget& main_window);

    /// Shows the list, or brings it to the front.
    void open_list();
    /// Starts a recording, ends the one that is on and keeps it, or stops the task that plays.
    void record_or_stop();
    /// The program ends: what is being recorded is kept.
    void end();
    /// To be called after each event: says in the status line what is on.
    void show_state();

private:
    void add_button(const QString& caption, const QString& name, void (TaskWindow::*work)());
    void list_tasks();
    /// Keeps what was recorded under a name that the user gives; no name lets it go after a question.
    void keep(const std::vector<std::string>& script);
    std::optional<QString> ask_name(const QString& preset);
    void play();
    void edit();
    void rename();
    void remove();
    void make_hole();
    void show_night_lines();
    Text chosen() const;
    /// What fails is reported over this window.
    void attempt(const std::function<void()>& work);
    std::filesystem::path file_of(TextView name) const;

    Front& front_;
    TaskPlayer& player_;
    StatusLine& status_;
    QListWidget& list_;
    QString played_;
};

} // namespace tarvik
