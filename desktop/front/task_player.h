#pragma once

#include "desktop/front/front.h"
#include "desktop/look/qt_text.h"
#include "runs/batch_runner.h"
#include "scripts/actions.h"

#include <QElapsedTimer>
#include <QTimer>

#include <sstream>
#include <utility>

namespace tarvik {

/// Plays a task in the window, at the pace of the program: the next line begins when nothing else is to be done. While
/// it plays, its answers answer the boxes.
class TaskPlayer final : public Stage {
public:
    TaskPlayer(Program& program_, EventQueue& queue, Dialogs& user_dialogs)
        : Stage(program_), queue_(queue), user_dialogs_(user_dialogs)
    {
        timer_.setInterval(pace);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { step(); });
        // What differs ends the task, also inside a tick that no line waits for. Boxes are the user's from then on.
        queue_.script_failed = [this](const ScriptFailure& failure) {
            failure_ = failure.what();
            asks_ = true;
        };
    }

    /// `ended` is called with the line, from 1, and what differed there, or with nothing when all went as recorded.
    void start(const std::string& script, std::function<void(const QString& difference)> ended)
    {
        lines_.clear();
        std::istringstream text(script);
        for (std::string line; std::getline(text, line);) lines_.push_back(std::move(line));
        ended_ = std::move(ended);
        answers = {};
        holes.clear();
        begun = waits_for_run_ = false;
        wait_.invalidate();
        failure_.clear();
        next_ = 0;
        plays_ = true;
        timer_.start();
    }
    /// A run that is in progress ends behind the sheet in hand.
    void stop()
    {
        if (!plays_) return;
        if (run_in_progress(program.form1)) program.run.stop_wished = true;
        end("已按要求停止");
    }
    bool plays() const { return plays_; }
    int line() const { return static_cast<int>(next_); }
    /// Those that answer at the moment.
    Dialogs& dialogs()
    {
        if (plays_ && !asks_) return *this;
        return user_dialogs_;
    }

    void pass_time(std::chrono::microseconds span) override
    {
        span_ = std::chrono::ceil<std::chrono::milliseconds>(span);
        wait_.start();
    }
    void run_batches(std::chrono::microseconds) override { waits_for_run_ = true; }
    bool waits() const override { return waits_for_run_ || wait_.isValid(); }
    bool close_menu() override { return true; }
    Text ask(const Text& name, const std::optional<Text>& preset, bool is_file) override
    {
        asks_ = true;
        std::optional<Text> given;
        if (is_file) given = user_dialogs_.open_file(name + U"|*.*");
        else given = user_dialogs_.input(application_title, name + U"：", preset.value_or(Text()));
        asks_ = false;
        if (!given || given->empty()) throw ScriptFailure("没有给出“" + to_utf8(name) + "”");
        return *given;
    }

private:
    static constexpr int pace = 30; // milliseconds between two lines, and between two looks at a run

    void step()
    {
        if (!plays_ || queue_.busy()) return;
        queue_.submit([this] {
            try {
                if (failure_.empty() && !still_waits()) play_line();
            } catch (const std::exception& failure) {
                failure_ = failure.what();
            }
            if (!failure_.empty()) end(QString("第 %1 行：%2").arg(next_).arg(QString::fromStdString(failure_)));
            else if (next_ == lines_.size() && !waits()) end({});
        });
    }
    bool still_waits()
    {
        if (waits_for_run_ && run_in_progress(program.form1)) return true;
        if (wait_.isValid() && !wait_.hasExpired(span_.count())) return true;
        if (!waits()) return false;
        waits_for_run_ = false;
        wait_.invalidate();
        check_left_over(*this);
        return false;
    }
    void play_line()
    {
        if (next_ == lines_.size()) return;
        const std::vector<Word> words = split_line(lines_[next_++], holes);
        if (!words.empty()) perform(*this, words);
    }
    void end(const QString& difference)
    {
        plays_ = asks_ = false;
        timer_.stop();
        if (!failure_.empty() && run_in_progress(program.form1)) stop_run(program);
        ended_(difference);
    }

    EventQueue& queue_;
    Dialogs& user_dialogs_;
    std::vector<std::string> lines_;
    std::function<void(const QString&)> ended_;
    std::size_t next_ = 0;
    bool plays_ = false, asks_ = false, waits_for_run_ = false;
    std::chrono::milliseconds span_{0};
    QElapsedTimer wait_;
    std::string failure_;
    QTimer timer_;
};

} // namespace tarvik
