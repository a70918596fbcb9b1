#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// "An statistic": writes the text of the document pane into 3150.txt of the installation folder, a record for each
/// character: the character, TAB, "*", its position counting from 1, CR, and the line end. Throws Failure when the file
/// cannot be written; the old one then stays.
void list_characters(Program& program);

} // namespace tarvik
