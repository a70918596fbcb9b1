#pragma once

#include "reading/query_entry.h"

namespace tarvik {

/// The query with no option selected: the pieces between separators that the user names in the number box. Gives
/// whether it ran to its end.
bool query_between_separators(Program& program, const QueryEntry& entry);

} // namespace tarvik
