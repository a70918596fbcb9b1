#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// The next-page button with "查寻文件" selected: stops at each page that holds the query and collects the code-like
/// words in front of its matches in a side file.
void search_pages(Program& program);

/// The position, going backward from the query's first place in `text`, of the first character that belongs to no word;
/// 1 if there is none.
std::size_t sousss(TextView text, TextView query);
/// What stands behind the first character that belongs to no word, where "]" belongs to one; empty if there is none.
TextView sousss1(TextView text);

} // namespace tarvik
