#pragma once

#include "platform/text/text.h"

#include <array>
#include <deque>

namespace tarvik {

/// Walks over the line ends of a text that end a sentence: "。" CR LF, "。" blank CR LF, "." CR LF and, for a look back
/// only, "!" CR LF. Places count from 0 and must not fall from call to call, so that any number of looks is linear in
/// the text. The text must outlive the walk.
class SentenceEndings {
public:
    explicit SentenceEndings(TextView text) : text_(text) {}

    /// Where the last ending that lies wholly before `place` begins, npos if there is none.
    std::size_t last_before(std::size_t place);

    /// Positions, counted from 1 at the place asked for, of the first ending of each kind; 0 for none.
    struct Positions {
        std::size_t stop = 0;       ///< "。" CR LF
        std::size_t stop_blank = 0; ///< "。" blank CR LF
        std::size_t full_stop = 0;  ///< "." CR LF
        bool any() const { return stop > 0 || stop_blank > 0 || full_stop > 0; }
    };
    /// The endings within 2,000 characters from `place`; if there are none, those within 40,000.
    Positions behind(std::size_t place);

private:
    enum Kind { stop, stop_blank, full_stop, exclamation, kinds };
    struct Ending {
        Kind kind;
        std::size_t place;
        std::size_t end;
    };
    /// The ending whose LF stands at `line_feed`; kinds if that line ends in nothing of the sort.
    Ending ending_at(std::size_t line_feed) const;
    void read_ahead(std::size_t end);
    Positions within(std::size_t place, std::size_t window);

    TextView text_;
    std::size_t read_back_ = 0;
    std::size_t last_ = npos;
    std::size_t read_ahead_ = 0;
    std::array<std::deque<std::size_t>, exclamation> ahead_; ///< places of each kind, not before the latest look
};

} // namespace tarvik
