#pragma once

#include "scripts/recorder.h"
#include "scripts/script.h"

#include <deque>
#include <functional>

namespace tarvik {

/// Lets one thing happen after the other: while a handler runs, with a dialog that it has opened or not, whatever else
/// happens waits.
class EventQueue {
public:
    /// `show` brings the windows up to date; it is called after each event.
    EventQueue(Program& program, Recorder& recorder, std::function<void()> show)
        : program_(program), recorder_(recorder), show_(std::move(show))
    {
    }

    /// Runs the action now, or when everything ahead of it is done. What it throws is reported to the user.
    void submit(std::function<void()> action);
    /// Sends an event when its turn comes.
    void post(const Event& event);
    /// Sends an event at once; only from inside an action.
    void send(Event& event);
    Recorder& recorder() { return recorder_; }
    bool busy() const { return busy_; }
    /// What differs from a script ends the event that it is found in, and is not reported to the user.
    std::function<void(const ScriptFailure&)> script_failed = [](const ScriptFailure&) {};
    /// Nothing happens any more.
    void close() { closed_ = true; }

private:
    void drain();
    void attempt(const std::function<void()>& work);

    Program& program_;
    Recorder& recorder_;
    std::function<void()> show_;
    std::deque<std::function<void()>> waiting_;
    bool busy_ = false, closed_ = false;
};

} // namespace tarvik
