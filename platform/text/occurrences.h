#pragma once

#include "platform/text/text.h"

#include <vector>

namespace tarvik {

/// Walks over the places of a needle in a text, overlapping ones too. Places count from 0 and only rise. The whole walk
/// is linear in the text, whatever text and needle hold. An empty needle is nowhere. The text must outlive the walk.
class Occurrences {
public:
    Occurrences(TextView text, TextView needle);

    /// Characters of the needle.
    std::size_t length() const { return needle_.size(); }
    /// The next place, npos when there are no more.
    std::size_t next();
    /// The first place at or behind `from`, npos if there is none. `from` must not fall from call to call.
    std::size_t at_or_behind(std::size_t from);

private:
    std::size_t follow_overlap();

    TextView text_;
    Text needle_;
    std::vector<std::size_t> borders_;
    std::size_t read_ = 0;       ///< characters of the text that have been looked at
    std::size_t matched_ = 0;    ///< characters before read_ that may begin an occurrence
    std::size_t current_ = npos; ///< what at_or_behind() found last
    bool started_ = false;
};

} // namespace tarvik
