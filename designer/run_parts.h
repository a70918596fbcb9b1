#pragma once

#include "mainwindow/mainwindow.h"

/// What the designed runs have in common: the key at hand and its rows, and the folder of spreadsheets.
namespace tarvik {

/// The entry of keylist that the run is at; empty before its first key, behind its last, and without a run.
Text run_key(const Program& program);

/// Makes the table of the key's rows, whose number goes to rowcount. A key without rows leaves both as they were.
void take_key_rows(Program& program);

/// The folder of spreadsheets that live comparisons work on: asks for one of its files unless a folder is chosen
/// already. False when the user cancels.
bool choose_source_folder(Program& program);

} // namespace tarvik
