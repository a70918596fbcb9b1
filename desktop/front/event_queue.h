#pragma once

#include "desktop/look/theme.h"
#include "scripts/recorder.h"
#include "scripts/script.h"

#include <deque>
#include <functional>
#include <iostream>
#include <new>

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
    void submit(std::function<void()> action)
    {
        if (closed_) return;
        waiting_.push_back(std::move(action));
        if (!busy_) drain();
    }
    /// Sends an event when its turn comes.
    void post(const Event& event)
    {
        submit([this, own = event]() mutable { send(own); });
    }
    /// Sends an event at once; only from inside an action.
    void send(Event& event)
    {
        if (program_.ended) return;
        const BusyCursor cursor; // a short handler changes it back before anybody sees it
        recorder_.send(event);
    }
    Recorder& recorder() { return recorder_; }
    bool busy() const { return busy_; }
    /// What differs from a script ends the event that it is found in, and is not reported to the user.
    std::function<void(const ScriptFailure&)> script_failed = [](const ScriptFailure&) {};
    /// Nothing happens any more.
    void close() { closed_ = true; }

private:
    void drain()
    {
        busy_ = true;
        while (!waiting_.empty()) {
            const auto action = std::move(waiting_.front());
            waiting_.pop_front();
            attempt(action);
            attempt(show_);
        }
        busy_ = false;
    }
    // Nothing may leave through the toolkit's event loop, nor may a failure end the queue: not even one of telling it.
    void attempt(const std::function<void()>& work)
    {
        const auto tell_of = [this](TextView reason) {
            try {
                tell(program_, U" 请注意：\r\n操作没有完成：" + reason, application_title, Icon::Critical);
            } catch (const std::exception& untold) {
                std::cerr << "tarvik: " << untold.what() << '\n';
            }
        };
        try {
            work();
        } catch (const ScriptFailure& failure) {
            script_failed(failure);
        } catch (const std::bad_alloc&) {
            tell_of(U"内存不足。");
        } catch (const std::exception& error) {
            tell_of(from_utf8(error.what()));
        }
    }

    Program& program_;
    Recorder& recorder_;
    std::function<void()> show_;
    std::deque<std::function<void()>> waiting_;
    bool busy_ = false, closed_ = false;
};

} // namespace tarvik
