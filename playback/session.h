#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "platform/files/disk_files.h"
#include "playback/options.h"
#include "playback/player_platform.h"
#include "playback/virtual_time.h"
#include "scripts/actions.h"

#include <memory>
#include <ostream>
#include <set>

namespace tarvik {

/// Time passes by the script alone, and what is asked for comes from the options.
class PlayerStage final : public Stage {
public:
    PlayerStage(Program& program_, Transcript& transcript_, Watches& watches_, Answers& answers_, VirtualClock& clock,
                PlayerScreen& screen, std::map<Text, Text> values)
        : Stage(program_, transcript_, watches_, answers_), timers(program_.form1, clock), clock_(clock),
          screen_(screen), values_(std::move(values))
    {
    }

    /// Fires the timers that fall due, in order.
    void pass_time(std::chrono::microseconds span) override;
    /// The clock then stands at the tick that ended the run.
    void run_batches(std::chrono::microseconds limit) override;
    bool close_menu() override { return screen_.close_menu(); }
    Text ask(const Text& name, const std::optional<Text>& preset, bool is_file) override;
    /// A value that no line has asked for is a ScriptFailure: it was meant for something.
    void begin() override;

    VirtualTimers timers;

private:
    bool fire_next(VirtualTime end);

    VirtualClock& clock_;
    PlayerScreen& screen_;
    std::map<Text, Text> values_;
    std::set<Text> asked_;
};

/// One run of the program with everything that the player puts around it.
struct Session {
    /// Throws OptionError when the options ask for what this system does not have. A user's dialogs and clipboard may
    /// take the place of the script's.
    Session(const Options& options, std::ostream& out, Dialogs* user_dialogs = nullptr,
            Clipboard* user_clipboard = nullptr);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Transcript transcript;
    Watches watches;
    VirtualClock clock;
    Answers answers;
    ScriptDialogs dialogs;
    PlayerClipboard clipboard;
    PlayerScreen screen;
    PlayerPrinter printer;
    DiskFiles files;
    libreoffice::LibreOffice libreoffice;
    std::unique_ptr<OfficeEngines> office;
    Program program;
    PlayerStage stage;

    /// Brings the program to its shown window, then shows the notice where there is one.
    void start(const Text& notice);
};

} // namespace tarvik
