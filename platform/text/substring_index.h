#pragma once

#include "platform/text/text.h"

#include <vector>

namespace tarvik {

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
