#pragma once

#include "mainwindow/mainwindow.h"

#include <span>

namespace tarvik {

/// The button "保存": the table view, or the results of the active mode, all of them or the one on the screen.
void save_results(Program& program);

/// Empties every result from index 0 to `last` that a later one equals, so that of equal results the last one stays.
void empty_earlier_copies(TextArray& results, std::size_t last);

} // namespace tarvik
