#pragma once

#include "mainwindow/mainwindow.h"

#include <span>

/// Works through the list of keys, one key a tick, and shows how far it is in the main window's caption.
namespace tarvik {

/// One family of sheets: what its timer does with each key.
struct SheetFamily {
    Timer Form1::*timer;
    /// Counts the key's records into allcount and partcount.
    void (*scan)(Program& program, TextView key);
    /// A key whose partcount is not above 0 makes no sheet.
    bool needs_records;
    void (*prepare)(Program& program);
    void (*sheet)(Program& program);
};

/// Turns a family's timer on and sets the run to its beginning.
void start_run(Program& program, Timer& timer);
/// Sets the caption anew and takes the head of the coming captions from it.
void set_run_title(Program& program);
/// Whether any of the batch timers is on.
bool run_in_progress(Form1& form1);

/// One tick of the family's timer. A failure stops the run, with everything as the last finished sheet left it, and
/// goes on to whoever tells the user.
void batch_tick(Program& program, const SheetFamily& family);
/// Finds the family of a timer that fell due, if it has one, and ticks it.
void batch_tick(Program& program, const Control& timer, std::span<const SheetFamily> families);

/// What every finished sheet does: opens the gate for the next tick and counts.
void close_sheet(Program& program);

} // namespace tarvik
