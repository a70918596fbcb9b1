#pragma once

#include "platform/text/substring_index.h"

#include <vector>

namespace tarvik {

/// What a column scan found in a document.
struct RowScan {
    std::int64_t matches = 0;   ///< every place of the needle, overlapping ones too
    std::vector<TextView> rows; ///< the line around each match that has one, in the order of the matches
    bool full = false;          ///< the scan ended at the last row that there is room for
};

/// How far behind the start of a match its line may end, in characters.
inline constexpr std::size_t look_ahead = 720;

/// Finds the lines of a lower-cased document that hold the needle. A line begins two characters behind a CR and ends
/// before the next one. A match with no CR before it has the document's beginning as its row, up to the next CR or to
/// the end of the look-ahead; a match with a CR before it and none within the look-ahead has no row. An empty needle is
/// found nowhere. The scan ends when it has `room` rows and finds one more. An
/// index of the document, if there is one, finds the matches.
RowScan scan_rows(TextView document, TextView needle, std::size_t room, const SubstringIndex* index = nullptr);

} // namespace tarvik
