#pragma once

#include "platform/text/text_search.h"

#include <span>
#include <vector>

/// How the lines of a document become rows and their fields.
namespace tarvik {

/// What a column scan found in a document.
struct RowScan {
    std::int64_t matches = 0;   ///< every place of the needle, overlapping ones too
    std::vector<TextView> rows; ///< the line around each match that has one, in the order of the matches
    bool full = false;          ///< the scan ended at the last row that there is room for
};

/// Finds the lines of a lower-cased document that hold the needle. A line begins two characters behind a CR and ends
/// before the next one. A match with no CR before it has the document's beginning as its row, up to the next CR or to
/// the end of the look-ahead, 720 characters from the match; a match with a CR before it and none within the look-ahead
/// has no row. An empty needle is found nowhere. The scan ends when it has `room` rows and finds one more. An index of
/// the document, if there is one, finds the matches.
RowScan scan_rows(TextView document, TextView needle, std::size_t room, const SubstringIndex* index = nullptr);

inline constexpr std::size_t last_split_column = 99;

/// Walks a row text, which is the line with a TAB before and behind, and calls `field(column, start, length)` for each
/// field: columns count from 1, `start` from 0 in the line. Fields behind the last column that is stored are left out.
template <typename Char, typename Field>
void split_line(std::span<const Char> line, Field&& field)
{
    constexpr std::size_t swallowing_tabs = 21; // a TAB with so many behind it counts as one with the next
    constexpr auto tab = static_cast<Char>(U'\t');
    // Place p of the row text is line[p - 1]; the last place is the closing TAB.
    const std::size_t last = line.size() + 1;
    const auto is_tab = [&](std::size_t place) { return place == last || line[place - 1] == tab; };
    const auto swallows = [&](std::size_t place) {
        if (place + swallowing_tabs > last) return false;
        for (std::size_t p = place + 1; p <= place + swallowing_tabs; ++p)
            if (!is_tab(p)) return false;
        return true;
    };
    std::size_t opening = 0;
    for (std::size_t column = 1; opening < last && column <= last_split_column; ++column) {
        const std::size_t start = opening + (swallows(opening) ? 2 : 1);
        std::size_t closing = start;
        while (closing < last && line[closing - 1] != tab) ++closing;
        field(column, start - 1, closing - start);
        opening = closing;
    }
}

/// The same for a line of any storage.
template <typename Field>
void split_line(TextView line, Field&& field)
{
    line.visit([&field]<typename Char>(std::span<const Char> characters) {
        split_line(characters, std::forward<Field>(field));
    });
}

} // namespace tarvik
