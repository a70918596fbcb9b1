#pragma once

#include "engines/libreoffice/bridge.h"

#include <windows.h>

#include <comdef.h>

#include <atomic>
#include <functional>
#include <mutex>

/// Objects of an application that is driven from outside, how long a call to it may take, and what happens to it when
/// it takes longer. But for the giving up one thread uses them at a time.
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

/// What an application answers to a call that it refuses, in its own words.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws ConnectionLost where the number says that the other program is gone, else Refusal.
[[noreturn]] void refuse(HRESULT number, TextView words);

/// An object of another program, whose members are looked up by name. A program that is busy is asked again for a
/// while; one that hangs is waited for until the patience ends. Names and values are those of English everywhere.
class ComObject {
public:
    using Values = std::vector<_variant_t>;
    ComObject(const _variant_t& value, std::shared_ptr<Patience> patience);

    /// A member that is a number; 0 where it is none.
    long count(const wchar_t* name) const;
    /// A member that is an object itself.
    ComObject object(const wchar_t* name, Values arguments = {}) const
    {
        return {invoke(name, getting, std::move(arguments)), patience_};
    }
    void put(const wchar_t* name, const _variant_t& value) const { invoke(name, DISPATCH_PROPERTYPUT, {value}); }
    void call(const wchar_t* name, Values arguments = {}) const { invoke(name, DISPATCH_METHOD, std::move(arguments)); }

private:
    static constexpr WORD getting = DISPATCH_PROPERTYGET | DISPATCH_METHOD;
    _variant_t invoke(const wchar_t* name, WORD way, Values arguments) const;

    _variant_t value_;
    std::shared_ptr<Patience> patience_;
};

/// A new application of this name; nothing where none is installed. One that comes only after it was given up is asked
/// to quit.
std::optional<ComObject> create_application(const wchar_t* name, const std::shared_ptr<Patience>& patience);

} // namespace tarvik::windows
