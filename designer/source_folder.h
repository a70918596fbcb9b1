#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// The folder of spreadsheets that live comparisons work on: asks for one of its files unless a folder is chosen
/// already. False when the user cancels.
bool choose_source_folder(Program& program);

} // namespace tarvik
