#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "platform/files/disk_files.h"
#include "playback/names.h"
#include "playback/options.h"
#include "playback/player_dialogs.h"
#include "playback/player_platform.h"
#include "playback/user.h"
#include "playback/virtual_timers.h"
#include "playback/watches.h"

#include <memory>
#include <ostream>

namespace tarvik {

/// One run of the program with everything that the player puts around it.
struct Session {
    /// Throws OptionError when the options ask for what this system does not have.
    Session(const Options& options, std::ostream& out);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Transcript transcript;
    Watches watches;
    VirtualClock clock;
    Answers answers;
    PlayerDialogs dialogs;
    PlayerClipboard clipboard;
    PlayerScreen screen;
    PlayerPrinter printer;
    DiskFiles files;
    libreoffice::LibreOffice libreoffice;
    std::unique_ptr<OfficeEngines> office;
    Program program;
    ControlDirectory controls;
    Names names;
    VirtualTimers timers;
    User user;

    /// Brings the program to its shown window, and tells what the user is to know then.
    void start(const Text& notice);
};

} // namespace tarvik
