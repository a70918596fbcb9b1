#pragma once

#include "desktop/front/front.h"
#include "desktop/services/dialogs.h"
#include "scripts/actions.h"

#include <QElapsedTimer>
#include <QTimer>

#include <sstream>

namespace tarvik {

/// What a stage needs before there is one.
struct TaskPlayerParts {
    std::ostringstream printed;
    Transcript own_transcript{printed};
    Watches own_watches{own_transcript};
    Answers own_answers;
};

/// Plays a task in the window, at the pace of the program: the next line begins when nothing else is to be done. While
/// it plays, its answers answer the boxes.
class TaskPlayer final : private TaskPlayerParts, public Stage {
public:
    TaskPlayer(Program& program_, EventQueue& queue, DesktopDialogs& user_dialogs);

    /// `ended` is called with the line, from 1, and what differed there, or with nothing when all went as recorded.
    void start(const std::string& script, std::function<void(const QString& difference)> ended);
    /// A run that is in progress ends behind the sheet in hand.
    void stop();
    bool plays() const { return plays_; }
    int line() const { return static_cast<int>(next_); }
    /// Those that answer at the moment.
    Dialogs& dialogs();

    void pass_time(std::chrono::microseconds span) override;
    void run_batches(std::chrono::microseconds limit) override;
    bool waits() const override { return waits_for_run_ || wait_.isValid(); }
    bool close_menu() override { return true; }
    Text ask(const Text& name, const std::optional<Text>& preset, bool is_file) override;

private:
    void step();
    bool still_waits();
    void play_line();
    void end(const QString& difference);

    EventQueue& queue_;
    DesktopDialogs& user_dialogs_;
    ScriptDialogs script_dialogs_;
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
