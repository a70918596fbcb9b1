#pragma once

#include "platform/platform.h"

#include <map>
#include <vector>

namespace tarvik {

/// What is known of the open document beside its text.
struct OpenedFile {
    Text path{}; ///< empty until a document is opened
    std::u32string_view encoding{};
    bool lines_ended_in_lf = false;
};

/// What is known of the report run in progress, or of the last one, beside the members of the main window: what a clerk
/// asks when it is over.
struct RunRecord {
    int number = 0; ///< of this run since the program started
    CalendarTime started{};
    std::vector<Text> files{}; ///< saved, in their order, as the program names them
    struct Passed {
        Text key, reason;
    };
    std::vector<Passed> passed{};        ///< keys that made no sheet, and why
    std::size_t not_reached = 0;         ///< keys that a stopped run did not come to
    std::vector<Text> failures{};        ///< files of a folder that were passed over, told when the run is over
    std::u32string_view template_file{}; ///< of the command that started it
    std::map<Text, Text> names{};        ///< the file that was given to each name that the sheets asked for
    bool stop_wished = false;            ///< the run is to end before its next sheet
    bool stopped = false;                ///< it ended, or did not even begin, before all was done
    bool ahead_of_command = false;       ///< text stood ahead of the command, so that sheets were not saved
    std::size_t older_layouts = 0;       ///< sheets laid the older way, because the box no longer held the command
};

} // namespace tarvik
