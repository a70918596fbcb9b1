#pragma once

#include "mainwindow/mainwindow.h"

/// The key of a designed run and its rows.
namespace tarvik {

/// The entry of keylist that the run is at; empty before its first key, behind its last, and without a run.
Text run_key(const Program& program);

/// Takes the lines of a report of the installation folder that hold the key as the rows of the table, and counts them
/// into partcount and rowcount.
void scan_key_rows(Program& program, TextView key, TextView report);

} // namespace tarvik
