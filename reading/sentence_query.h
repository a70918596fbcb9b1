#pragma once

#include "reading/query_entry.h"

namespace tarvik {

/// The query "查寻文件": the sentences, with fixed endings, around each match. Gives whether it ran to its end.
bool query_sentences(Program& program, const QueryEntry& entry);

} // namespace tarvik
