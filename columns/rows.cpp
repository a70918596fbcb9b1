#include "columns/rows.h"

namespace tarvik {

RowScan scan_rows(TextView document, TextView needle, std::size_t room, const SubstringIndex* index)
{
    constexpr char32_t cr = U'\r';
    constexpr std::size_t look_ahead = 720;
    if (needle.empty()) return {};
    RowScan scan;
    std::size_t before = npos, ahead = document.find(cr); // the CRs around the latest match, which only moves forward
    // Gives false when there is no room for the row of this match.
    const auto take = [&](std::size_t match) {
        if (ahead != npos && ahead < match) {
            before = match - 1;
            while (document[before] != cr) --before; // the one ahead until now is there at the latest
            ahead = document.find(cr, match);
        }
        const bool ends = ahead != npos && ahead - match < look_ahead;
        const bool has_row = ends || before == npos;
        scan.full = has_row && scan.rows.size() == room;
        if (scan.full) return false;
        scan.matches += 1;
        if (!has_row) return true;
        const std::size_t begin = before == npos ? 0 : before + 2;
        const std::size_t end = ends ? ahead : match + look_ahead;
        scan.rows.push_back(document.substr(begin, end > begin ? end - begin : 0));
        return true;
    };
    if (index && index->serves(needle)) {
        for (const std::size_t match : index->places(document, needle))
            if (!take(match)) break;
    } else {
        Occurrences matches(document, needle);
        for (std::size_t match = matches.next(); match != npos && take(match);) match = matches.next();
    }
    return scan;
}

} // namespace tarvik
