#pragma once

#include "desktop/front/task_player.h"
#include "desktop/look/qt_text.h"
#include "desktop/windows/status_line.h"
#include "platform/failure.h"
#include "platform/files/paths.h"
#include "runs/batch_runner.h"
#include "scripts/task_files.h"

#include <QDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>

#include <map>

namespace tarvik {

/// The list of the tasks and everything done with them: recording, playing, keeping.
class TaskWindow final : public QDialog {
public:
    TaskWindow(Front& front, TaskPlayer& player, StatusLine& status, QWidget& main_window)
        : QDialog(&main_window), front_(front), player_(player), status_(status), list_(*new QListWidget(this))
    {
        setObjectName("tasks");
        setWindowTitle("任务");
        list_.setObjectName("task_list");
        auto* grid = new QGridLayout(this);
        grid->addWidget(&list_, 0, 0, 8, 1);
        add_button("开始", "play", &TaskWindow::play);
        add_button("录制 / 结束录制", "record", &TaskWindow::record_or_stop);
        add_button("编辑", "edit", &TaskWindow::edit);
        add_button("改名", "rename", &TaskWindow::rename);
        add_button("删除", "remove", &TaskWindow::remove);
        add_button("每次询问…", "hole", &TaskWindow::make_hole);
        add_button("夜间运行…", "night", &TaskWindow::show_night_lines);
        connect(&list_, &QListWidget::itemActivated, this, [this] { attempt([this] { play(); }); });
    }

    /// Shows the list, or brings it to the front.
    void open_list()
    {
        attempt([this] { list_tasks(); });
        list_.setFocus(); // Enter starts the chosen one, whatever button was pressed last
        show();
        raise();
        activateWindow();
    }
    /// Starts a recording, ends the one that is on and keeps it, or stops the task that plays.
    void record_or_stop()
    {
        front_.queue.submit([this] {
            Recorder& recorder = front_.queue.recorder();
            if (player_.plays()) player_.stop();
            else if (recorder.on()) keep(recorder.finish());
            else recorder.start();
            show_state();
        });
    }
    /// The program ends: what is being recorded is kept.
    void end()
    {
        if (front_.queue.recorder().on()) keep(front_.queue.recorder().finish());
    }
    /// To be called after each event: says in the status line what is on.
    void show_state()
    {
        if (player_.plays()) status_.show_mark("▶ 任务“" + played_ + QString("”第 %1 行").arg(player_.line()));
        else status_.show_mark(front_.queue.recorder().on() ? "● 录制中（Shift+F9 结束）" : "");
    }

private:
    void add_button(const QString& caption, const QString& name, void (TaskWindow::*work)())
    {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        auto* grid = dynamic_cast<QGridLayout*>(layout());
        grid->addWidget(button, grid->count() - 1, 1);
        connect(button, &QPushButton::clicked, this, [this, work] { attempt([this, work] { (this->*work)(); }); });
    }
    void list_tasks()
    {
        const QString before = list_.currentItem() ? list_.currentItem()->text() : QString();
        list_.clear();
        for (const Text& name : task_names(front_.program.platform.files)) {
            list_.addItem(to_qt(name));
            if (to_qt(name) == before) list_.setCurrentRow(list_.count() - 1);
        }
        if (!list_.currentItem()) list_.setCurrentRow(0);
    }
    /// Keeps what was recorded under a name that the user gives; no name lets it go after a question.
    // A name that cannot be had is asked for again: nothing that was recorded is lost by it.
    void keep(const std::vector<std::string>& script)
    {
        for (QString name = "任务";;) {
            const QString given = ask_name(name);
            const auto lets_go = [this] {
                return QMessageBox::question(parentWidget(), windowTitle(), "录制的内容不保存吗？") == QMessageBox::Yes;
            };
            if (given.isEmpty() && lets_go()) return;
            if (given.isEmpty()) continue;
            name = given;
            try {
                keep_task(front_.program.platform, from_qt(name), script);
                list_tasks();
                return;
            } catch (const Failure& failure) {
                QMessageBox::warning(parentWidget(), windowTitle(), to_qt(failure.message()));
            }
        }
    }
    /// Empty where none is given.
    QString ask_name(const QString& preset)
    {
        return QInputDialog::getText(parentWidget(), windowTitle(), "任务名：", QLineEdit::Normal, preset);
    }
    // The window is brought to where a recording begins, as far as that can be.
    void play()
    {
        const Text name = chosen();
        const std::string script = front_.program.platform.files.read(task_path(name));
        front_.queue.submit([this, name, script] {
            if (player_.plays() || front_.queue.recorder().on() || run_in_progress(front_.program.form1)) return;
            Event click{EventKind::Click, front_.program.form1.window};
            front_.queue.send(click);
            front_.queue.recorder().restore_opening();
            played_ = to_qt(name);
            player_.start(script, [this](const QString& difference) {
                show_state();
                if (difference.isEmpty()) status_.show_notice("任务“" + played_ + "”已经做完");
                else
                    QMessageBox::warning(parentWidget(), windowTitle(), "任务“" + played_ + "”停止了。\n" + difference);
            });
        });
        hide();
    }
    void edit() { status_.show_by_system(real_path(front_.program.platform.files, task_path(chosen()))); }
    void rename()
    {
        const Text name = chosen();
        const QString given = ask_name(to_qt(name));
        if (!given.isEmpty()) rename_task(front_.program.platform.files, name, from_qt(given));
        list_tasks();
    }
    void remove()
    {
        const Text name = chosen();
        if (QMessageBox::question(this, windowTitle(), "删除任务“" + to_qt(name) + "”吗？") != QMessageBox::Yes) return;
        std::filesystem::remove(front_.program.platform.files.resolve(task_path(name)));
        list_tasks();
    }
    void make_hole()
    {
        const Text name = chosen();
        Files& files = front_.program.platform.files;
        const std::string script = files.read(task_path(name));
        const std::vector<ChangeableText> texts = changeable_texts(script);
        QStringList shown;
        for (const ChangeableText& text : texts) shown += QString("%1  ").arg(text.line + 1) + to_qt(text.shown);
        if (shown.isEmpty()) throw Failure(U"这个任务中没有文件、键入的文本或回答可以改为每次询问。");
        bool given = false;
        const QString line =
            QInputDialog::getItem(this, windowTitle(), "每次询问哪一行的内容：", shown, 0, false, &given);
        if (!given) return;
        const QString hole = QInputDialog::getText(this, windowTitle(), "询问时叫什么（命令行为 --set 名称=值）：",
                                                   QLineEdit::Normal, "文件");
        if (!hole.isEmpty())
            files.replace(task_path(name),
                          with_hole(script, texts[static_cast<std::size_t>(shown.indexOf(line))].line, from_qt(hole)));
    }
    void show_night_lines()
    {
        std::filesystem::path player = program_file().parent_path() / "tarvik-play";
        player += program_file().extension();
        QMessageBox box(QMessageBox::Information, windowTitle(), "每天夜里两点运行它，把一行粘贴到：", {}, this);
        std::map<QAbstractButton*, Text> lines;
        for (const auto& [timetable, line] : night_lines(player, chosen())) {
            box.setText(box.text() + "\n\n" + to_qt(timetable) + "\n" + to_qt(line));
            lines[box.addButton("复制：" + to_qt(timetable), QMessageBox::AcceptRole)] = line;
        }
        box.addButton("关闭", QMessageBox::RejectRole);
        box.setTextInteractionFlags(Qt::TextSelectableByMouse);
        box.exec();
        if (const auto chosen_line = lines.find(box.clickedButton()); chosen_line != lines.end())
            front_.program.platform.clipboard.set_text(chosen_line->second);
    }
    Text chosen() const
    {
        if (!list_.currentItem()) throw Failure(U"还没有任务：按 Shift+F9 开始录制，再按一次结束。");
        return from_qt(list_.currentItem()->text());
    }
    /// What fails is reported over this window.
    void attempt(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const std::exception& failure) {
            QMessageBox::warning(this, windowTitle(), QString::fromStdString(failure.what()));
        }
    }

    Front& front_;
    TaskPlayer& player_;
    StatusLine& status_;
    QListWidget& list_;
    QString played_;
};

} // namespace tarvik
