#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// The buttons "→" and "←": show the next or the previous result of the active mode. They give whether they ran to
/// their end.
bool show_next_result(Program& program);
bool show_previous_result(Program& program);

} // namespace tarvik
