#pragma once

#include "mainwindow/mainwindow.h"

/// What this folder offers: the documents that the user reads, their pages, the text queries, the dictionaries, and the
/// saving of what was found.
namespace tarvik {

/// 0 opens a document, 1 starts the query of the active mode, 2 and 3 walk through its results, 4 saves them.
void Command1_Click(Program& program, int index);

/// 0 and 1 turn the page, 8 goes to the page whose number stands in the page box; every index first blackens the caret.
void Command2_Click(Program& program, int index);

/// The query of the active mode, started by Enter in a box of Text1.
void query_by_enter(Program& program);

inline constexpr std::u32string_view text_files = U"文本文件*.txt|*.txt";

/// Lets the user choose a text file, reads it into the document pane and cuts it into pages. Whatever fails, a
/// cancelled dialog included, ends it without a message; what was done so far stays.
void open_document(Program& program);

/// The position, going backward from the query's first place in `text`, of the first character that belongs to no word;
/// 1 if there is none.
std::size_t sousss(TextView text, TextView query);
/// What stands behind the first character that belongs to no word, where "]" belongs to one; empty if there is none.
TextView sousss1(TextView text);

/// The button "保存": the table view, or the results of the active mode, all of them or the one on the screen.
void save_results(Program& program);

/// Empties every result from index 0 to `last` that a later one equals, so that of equal results the last one stays.
void empty_earlier_copies(TextArray& results, std::size_t last);

} // namespace tarvik
