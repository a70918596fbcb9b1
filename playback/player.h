#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "platform/files/files.h"
#include "runs/engines.h"
#include "scripts/actions.h"

#include <chrono>
#include <filesystem>
#include <istream>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>

namespace tarvik {

/// Options that cannot be used, with the reason.
class OptionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Options {
    enum class Request { Play, Names, Help, Version };

    Request request = Request::Play;
    std::filesystem::path installation;           ///< empty when none is given
    Text notice;                                  ///< a message for the user, once the window stands
    std::map<char, std::filesystem::path> drives; ///< by lower-case letter
    std::chrono::local_seconds clock;
    double screen_width = 28800, screen_height = 16200; ///< twips
    std::optional<std::filesystem::path> print_to;
    Engine engine = Engine::Auto;
    std::map<Text, Text> values; ///< of what the script asks for, by name
    std::string script;          ///< a file, the name of a task, or - for standard input
};

/// `arguments` go without the program's own name. Throws OptionError.
Options parse_options(std::span<const std::string> arguments);

/// Script seconds are decimal numbers, so the clock counts finer than the timers.
using VirtualTime = std::chrono::microseconds;

/// A clock that stands still until somebody lets time pass.
class VirtualClock final : public Clock {
public:
    explicit VirtualClock(std::chrono::local_seconds start) : start_(start) {}
    CalendarTime now() const override;

    VirtualTime elapsed{0}; ///< since the start

private:
    std::chrono::local_seconds start_;
};

/// Reads "YYYY-MM-DD hh:mm:ss"; nothing when the text is no such time.
std::optional<std::chrono::local_seconds> parse_time(std::string_view text);
/// The time that the system's clock shows at this place.
std::chrono::local_seconds local_time_now();

/// When the main window's timers fall due on the virtual clock. A timer counts from the moment at which it was switched
/// on; switched on again, it counts anew.
class VirtualTimers {
public:
    explicit VirtualTimers(const VirtualClock& clock) : clock_(clock) {}

    /// To be called when a timer was switched on or off or has got another interval; other controls are passed over.
    void changed(Control& control);

    struct Due {
        Timer* timer;
        VirtualTime at;
    };
    /// The timer that falls due next, by time, then by name and index; nothing when none runs.
    std::optional<Due> next() const;
    /// Takes note that the timer has fallen due; it goes on with its next interval.
    void fired(Timer& timer);

private:
    const VirtualClock& clock_;
    std::map<Timer*, VirtualTime> due_; ///< of those that run
};

/// The clipboard of one run; the system's own is left alone.
class PlayerClipboard final : public Clipboard {
public:
    void clear() override { text_ = {}; }
    Text text() const override { return text_.str(); }
    void set_text(TextView text) override { text_ = SharedText(text); }

private:
    SharedText text_;
};

/// A printer that lays a copy of what is printed into a folder. With no folder there is no printer.
class PlayerPrinter final : public Printer {
public:
    PlayerPrinter(Transcript& transcript, std::optional<std::filesystem::path> folder)
        : transcript_(transcript), folder_(std::move(folder))
    {
    }
    /// Keeps what lies in the folder: a further document of the same name gets a number behind its own.
    void print(const std::filesystem::path& file, TextView name) override;

private:
    std::filesystem::path free_place(TextView name) const;
    Transcript& transcript_;
    std::optional<std::filesystem::path> folder_;
};

/// One run of the program with everything that the player puts around it, a screen that nobody looks at among it. Time
/// passes by the script alone, and what is asked for comes from the options.
class Session final : public Stage, private Screen {
public:
    /// Throws OptionError when the options ask for what this system does not have. A user's dialogs and clipboard may
    /// take the place of the script's.
    Session(const Options& options, std::ostream& out, Dialogs* user_dialogs = nullptr,
            Clipboard* user_clipboard = nullptr);

    /// Brings the program to its shown window, then shows the notice where there is one.
    void start();
    /// Fires the timers that fall due, in order.
    void pass_time(std::chrono::microseconds span) override;
    /// The clock then stands at the tick that ended the run.
    void run_batches(std::chrono::microseconds limit) override;
    /// The menu stays open until the script picks an entry.
    bool close_menu() override { return std::exchange(menu_open_, false); }
    Text ask(const Text& name, const std::optional<Text>& preset, bool is_file) override;
    /// A value that no line has asked for is a ScriptFailure: it was meant for something.
    void begin() override;

    VirtualClock clock;
    VirtualTimers timers{clock};

private:
    double width() const override { return options_.screen_width; }
    double height() const override { return options_.screen_height; }
    void refresh() override {}
    void progress(std::uint64_t, std::uint64_t) override {}
    void popup_menu() override;
    bool fire_next(VirtualTime end);

    const Options options_;
    std::set<Text> asked_;
    bool menu_open_ = false;
    PlayerClipboard clipboard_;
    PlayerPrinter printer_;
    Files files_;
    libreoffice::LibreOffice libreoffice_;
    std::unique_ptr<OfficeEngines> office_;
    Program program_;
};

/// Plays a script from its first line to its last: the transcript goes to `out`, failures and missed expectations with
/// the script's line to `errors`. Gives the exit status: 0 when the script reached its end (or the program was closed)
/// and every expectation held, else 1. Throws OptionError when the options ask for what this system does not have.
int play(const Options& options, std::istream& script, std::ostream& out, std::ostream& errors);

/// The names that a script can ask for, one a line.
void list_names(std::ostream& out);

} // namespace tarvik
