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

/// Where short pieces of a text stand: finds a needle in time that goes by how often its rarest piece occurs and not by
/// the text's length. It takes some four bytes a character and does not hold the text itself.
class SubstringIndex {
public:
    /// Needles shorter than this are not served.
    static constexpr std::size_t shortest_needle = 5;
    /// Longer texts than this cannot be indexed.
    static constexpr std::size_t longest_text = std::size_t{1} << 29U;

    explicit SubstringIndex(TextView text);

    bool serves(TextView needle) const noexcept { return needle.size() >= shortest_needle; }
    /// All places of the needle in the indexed text or a beginning of it, overlapping ones too, ascending from 0.
    std::vector<std::size_t> places(TextView text, TextView needle) const;

private:
    std::size_t bucket(std::uint32_t hash) const noexcept;

    unsigned bits_;                     ///< of a bucket's number
    std::vector<std::uint32_t> starts_; ///< of each bucket in `places_`, and the end
    std::vector<std::uint32_t> places_; ///< of all pieces, by bucket and ascending in each
};

} // namespace tarvik
