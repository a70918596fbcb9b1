#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

inline constexpr std::u32string_view text_files = U"文本文件*.txt|*.txt";

/// Lets the user choose a text file, reads it into the document pane and cuts it into pages. Whatever fails, a
/// cancelled dialog included, ends it without a message; what was done so far stays.
void open_document(Program& program);

} // namespace tarvik
