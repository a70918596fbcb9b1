#include "columns/row_scan.h"

#include "platform/text/occurrences.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr char32_t cr = U'\r';

/// The CRs around a place that only moves forward.
class LineBounds {
public:
    explicit LineBounds(TextView document) : document_(document), ahead_(document.find(cr)) {}

    void move_to(std::size_t place)
    {
        if (ahead_ == npos || ahead_ >= place) return;
        before_ = place - 1;
        while (document_[before_] != cr) --before_; // the one ahead until now is there at the latest
        ahead_ = document_.find(cr, place);
    }
    std::size_t before() const { return before_; } ///< npos when there is none
    std::size_t ahead() const { return ahead_; }   ///< at the place or behind it

private:
    TextView document_;
    std::size_t before_ = npos, ahead_;
};

/// Takes the lines around matches that come in their order.
class RowTaker {
public:
    RowTaker(TextView document, std::size_t room) : document_(document), bounds_(document), room_(room) {}

    /// False when there is no room for the row of this match.
    bool take(std::size_t match)
    {
        bounds_.move_to(match);
        const bool ends = bounds_.ahead() != npos && bounds_.ahead() - match < look_ahead;
        const bool has_row = ends || bounds_.before() == npos;
        scan.full = has_row && scan.rows.size() == room_;
        if (scan.full) return false;
        scan.matches += 1;
        if (!has_row) return true;
        const std::size_t begin = bounds_.before() == npos ? 0 : bounds_.before() + 2;
        const std::size_t end = ends ? bounds_.ahead() : match + look_ahead;
        scan.rows.push_back(document_.substr(begin, end > begin ? end - begin : 0));
        return true;
    }

    RowScan scan;

private:
    TextView document_;
    LineBounds bounds_;
    std::size_t room_;
};

} // namespace

RowScan scan_rows(TextView document, TextView needle, std::size_t room, const SubstringIndex* index)
{
    if (needle.empty()) return {};
    RowTaker taker(document, room);
    if (index && index->serves(needle)) {
        for (const std::size_t match : index->places(document, needle))
            if (!taker.take(match)) break;
    } else {
        Occurrences matches(document, needle);
        for (std::size_t match = matches.next(); match != npos; match = matches.next())
            if (!taker.take(match)) break;
    }
    return std::move(taker.scan);
}

} // namespace tarvik
