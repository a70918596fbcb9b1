#pragma once

#include "mainwindow/mainwindow.h"

/// What this folder offers: the documents that the user reads, their pages, the text queries, the dictionaries, and the
/// saving of what was found. paging.h opens a document for whoever else needs one.
namespace tarvik {

/// 0 opens a document, 1 starts the query of the active mode, 2 and 3 walk through its results, 4 saves them.
void Command1_Click(Program& program, int index);

/// 0 and 1 turn the page, 8 goes to the page whose number stands in the page box; every index first blackens the caret.
void Command2_Click(Program& program, int index);

/// The query of the active mode, started by Enter in a box of Text1.
void query_by_enter(Program& program);

/// The button "保存": the table view, or the results of the active mode, all of them or the one on the screen.
void save_results(Program& program);

/// Empties every result from index 0 to `last` that a later one equals, so that of equal results the last one stays.
void empty_earlier_copies(TextArray& results, std::size_t last);

} // namespace tarvik
