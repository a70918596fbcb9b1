#pragma once

#include "platform/files/files.h"
#include "platform/text/text.h"

#include <cstdint>
#include <functional>

/// Everything that the core asks of the world outside. Each interface has a real implementation and the player's.
namespace tarvik {

/// The program's version, e.g. "0.1".
std::string_view version() noexcept;

enum class Buttons { OK, OKCancel, YesNo, YesNoCancel };
enum class Icon { None, Information, Question, Exclamation, Critical };
/// The numbers are those that the main window keeps in `answer`.
enum class Answer { None = 0, OK = 1, Cancel = 2, Yes = 6, No = 7 };

/// The title of a box that has none of its own.
inline constexpr std::u32string_view application_title = U"Tarvik 计算";

struct Message {
    Text text;
    Text title{application_title};
    Buttons buttons = Buttons::OK;
    Icon icon = Icon::None;
};

/// Boxes that wait for the user. No handler runs while one is open.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual Answer message(const Message& message) = 0;
    /// The text that the user leaves in the box; a cancelled box gives the empty text.
    virtual Text input(TextView title, TextView prompt, TextView preset) = 0;
    /// The full path of the file chosen, or nothing when cancelled. A filter is "name|*.ext|name|*.ext".
    virtual std::optional<Text> open_file(TextView filter) = 0;
    virtual std::optional<Text> save_file(TextView filter) = 0;
};

/// A text that need never stand in one buffer: hands itself over in parts, as often as it is called.
using TextSource = std::function<void(const std::function<void(TextView)>& take)>;

class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual void clear() = 0;
    virtual Text text() const = 0;
    virtual void set_text(TextView text) = 0;
    /// Puts a text there that is written out no sooner than it must be.
    virtual void set_source(const TextSource& source)
    {
        Text text;
        source([&text](TextView part) { text += part.str(); });
        set_text(text);
    }
};

struct CalendarTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual CalendarTime now() const = 0;
};

/// The computer's clock, in its local time.
class SystemClock final : public Clock {
public:
    CalendarTime now() const override;
};

/// The time of day as captions show it, h:mm:ss in 24 hours.
Text time_of_day(const CalendarTime& time);
/// The date as file names hold it, yyyy-mm-dd.
Text date_text(const CalendarTime& time);

class Screen {
public:
    virtual ~Screen() = default;
    /// Twips.
    virtual double width() const = 0;
    virtual double height() const = 0;
    /// A long run has something to show: the front may bring what it shows up to date from the controls of the model,
    /// and lets the system draw it. It changes nothing of the model, opens no box and enters no handler; what the user
    /// does waits. It does not read the tables and arrays either: another thread may be filling them.
    virtual void refresh() = 0;
    /// How far a long piece of work has come, `done` of `total`; total 0 ends the display. The front may do what it may
    /// in refresh().
    virtual void progress(std::uint64_t done, std::uint64_t total) = 0;
    /// Opens the context menu; its entry comes back as an event.
    virtual void popup_menu() = 0;
};

class Printer {
public:
    virtual ~Printer() = default;
    /// Sends a finished file to the default printer, and gives when the printer's queue has taken it: the handler in
    /// hand and with it the window wait that long, not for the paper. Throws Failure when there is no printer or
    /// nothing that can print the file. `name` is the document's file name as the user knows it.
    virtual void print(const std::filesystem::path& file, TextView name) = 0;
};

struct Platform {
    Dialogs& dialogs;
    Clipboard& clipboard;
    Clock& clock;
    Files& files;
    Screen& screen;
    Printer& printer;

    /// The same world seen through other files.
    Platform with(Files& other) const { return {dialogs, clipboard, clock, other, screen, printer}; }
};

} // namespace tarvik
