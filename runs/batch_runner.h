#pragma once

#include "columns/columns.h"
#include "mainwindow/mainwindow.h"

/// Works through the list of keys, one key a tick, and shows how far it is in the main window's caption.
///
/// The gate (`batchgate`) keeps a second sheet from being begun while one is under way: a tick that finds it closed
/// does nothing. The sheets of dockets, test dockets, service lists and repair reports close it as soon as their
/// application is open; close_sheet() and stop_run() open it again, so it is open between two ticks whatever became of
/// a sheet. All other sheets leave it alone but for close_sheet().
namespace tarvik {

/// One family of sheets: what its timer does with each key.
struct SheetFamily {
    Timer Form1::*timer = nullptr;
    /// What a timer without keys does in place of all that follows.
    void (*own_tick)(Program& program) = nullptr;
    /// Counts the key's records into partcount, and what else the family counts.
    void (*scan)(Program& program, TextView key) = nullptr;
    /// A key whose partcount is not above 0 makes no sheet.
    bool needs_records = true;
    /// Makes the table, and what the sheet needs besides it.
    void (*prepare)(Program& program) = devision1;
    /// Makes one sheet, with the gate closed or not; ends with close_sheet(), or with stop_run().
    void (*sheet)(Program& program) = nullptr;
    /// What else the end of a run does.
    void (*finished)(Program& program) = nullptr;
};

/// What is known of an earlier run is forgotten; a new one begins now.
void begin_record(Program& program);
/// Turns a family's timer on and sets the run to its beginning.
void start_run(Program& program, Timer& timer);
/// Whether any of the batch timers is on.
bool run_in_progress(Form1& form1);
/// Back to idle at once, whatever timer is on: sheetno 1, batchcursor -1, the gate open, no ending in the caption. The
/// run counts as stopped.
void stop_run(Program& program);
/// The entry of keylist that the run is at; empty before its first key, behind its last, and without a run.
Text run_key(const Program& program);

/// One tick of the family's timer. A failure stops the run, with everything as the last finished sheet left it, and
/// goes on to whoever reports it; so does a wish to stop it, and a key whose scan would go to the other table.
/// Files that the run passed over until then are reported with it.
void batch_tick(Program& program, const SheetFamily& family);

/// What every finished sheet does: opens the gate for the next tick, shows how many are left and counts.
void close_sheet(Program& program);

// Captions and pace, for every command that works through many files

/// Begins a command that runs to its end at once: sets the caption anew, takes the head of the coming captions from it,
/// and the time of day goes to jobstart.
void set_job_title(Program& program);
void show_caption(Program& program, Text caption);
/// The time of day, as captions show it.
Text run_time(const Program& program);
/// Seconds since the start of the run or job in hand, over midnight too.
double seconds_elapsed(const Program& program);

} // namespace tarvik
