#pragma once

#include "reading/query_entry.h"

/// The queries of the document and the walk through their results; query_entry.h says what they start from.
namespace tarvik {

/// The query with no option selected: the pieces between separators that the user names in the number box. Gives
/// whether it ran to its end.
bool query_between_separators(Program& program, const QueryEntry& entry);

/// The query "查寻文件": the sentences, with fixed endings, around each match. Gives whether it ran to its end.
bool query_sentences(Program& program, const QueryEntry& entry);

/// The buttons "→" and "←": show the next or the previous result of the active mode. They give whether they ran to
/// their end.
bool show_next_result(Program& program);
bool show_previous_result(Program& program);

} // namespace tarvik
