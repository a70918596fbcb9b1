#pragma once

#include <QIcon>

namespace tarvik {

/// The mark of the program, the same drawing as resources/tarvik.svg: a table with a found row, a key, an arrow.
QIcon window_icon();

} // namespace tarvik
