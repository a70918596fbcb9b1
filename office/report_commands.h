#pragma once

#include "mainwindow/mainwindow.h"

#include <span>

/// The report commands of the query box: recognition, questions, the list of keys, the start of the run.
namespace tarvik {

/// A command that runs at once, ahead of the question for the output folder.
struct ImmediateCommand {
    std::u32string_view text;
    void (*run)(Program& program);
};

/// A command that asks for the output folder, makes a list of keys and leaves the sheets to a timer.
struct ReportCommand {
    std::u32string_view text; ///< found anywhere in the query box, case kept
    /// The report that the user is asked to have open and to have saved in the installation folder, and what is said
    /// behind the folder.
    std::u32string_view confirmed_report;
    std::u32string_view confirmation_tail;
    std::u32string_view key; ///< picks the lines of the open document
    int key_column;          ///< whose distinct values are the keys of the run
    Timer Form1::*timer;
};

/// Both lists are tested from the top: the first text that the query box holds decides.
struct CommandTable {
    std::span<const ImmediateCommand> immediate;
    std::span<const ReportCommand> reports;
};

/// Enter in the query box. False when no command was found; the question for the output folder has then been asked all
/// the same if the box holds "An". Throws Failure when the output folder cannot be made.
bool run_command(Program& program, const CommandTable& commands);

} // namespace tarvik
