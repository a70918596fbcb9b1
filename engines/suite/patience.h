#pragma once

#include "engines/libreoffice/bridge.h"

#include <windows.h>

#include <atomic>
#include <functional>
#include <mutex>

/// How long a call may take that goes to another program, and what happens to that program when it takes longer.
namespace tarvik::windows {

/// The process of an application and its main window.
struct ApplicationProcess {
    std::shared_ptr<void> handle;
    HWND window = nullptr;
};

/// What the thread that calls an application shares with the one that gives up waiting for it. A call that was given up
/// runs on in a thread that nobody waits for: a program that hangs holds nobody up.
class Patience {
public:
    using Time = std::chrono::milliseconds;

    /// What is about to be done may take so long beyond the usual limit; the words are for the user if it takes longer.
    void begin(Time patience, Text words);
    /// Calls on a thread of its own, and throws ConnectionLost when it is given up meanwhile.
    HRESULT call(std::function<HRESULT()> work) const;
    /// From any thread: the calls under way fail and all later ones do. The process is ended where it is known, unless
    /// its window shows: then it is somebody's. Gives what the user is to know, nothing as long as more patience is
    /// due.
    std::optional<Text> give_up(Time waited);
    bool is_given_up() const noexcept { return is_given_up_; }

    /// From now on a call is waited for so long and no longer.
    void limit(Time from_now) { deadline_ = Clock::now() + from_now; }
    void know(ApplicationProcess process);

private:
    using Clock = std::chrono::steady_clock;

    std::atomic<bool> is_given_up_ = false;
    Clock::time_point deadline_ = Clock::time_point::max();
    std::mutex mutex_; ///< of those below
    Time patience_{0};
    Text words_;
    ApplicationProcess process_;
};

} // namespace tarvik::windows
