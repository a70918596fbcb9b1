#include "platform/text/substring_index.h"

#include <algorithm>
#include <bit>

namespace tarvik {

namespace {

constexpr std::size_t piece = SubstringIndex::shortest_needle;
constexpr std::uint32_t base = 0x01000193;
constexpr std::uint32_t spread = 0x9e3779b1;
constexpr unsigned least_bits = 8, most_bits = 26;
constexpr std::size_t pieces_a_bucket = 4;

constexpr std::uint32_t leaving_factor = [] {
    std::uint32_t factor = 1;
    for (std::size_t i = 1; i < piece; ++i) factor *= base;
    return factor;
}();

/// Calls `work` with the place and the hash of every piece of the text, from its start.
template <typename Work>
void for_each_piece(TextView text, Work&& work)
{
    text.visit([&](auto characters) {
        std::uint32_t hash = 0;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            hash = hash * base + static_cast<std::uint32_t>(characters[i]);
            if (i + 1 < piece) continue;
            const std::size_t place = i + 1 - piece;
            work(place, hash);
            hash -= static_cast<std::uint32_t>(characters[place]) * leaving_factor;
        }
    });
}

} // namespace

SubstringIndex::SubstringIndex(TextView text)
    : bits_(std::clamp<unsigned>(static_cast<unsigned>(std::bit_width(text.size() / pieces_a_bucket)), least_bits,
                                 most_bits)),
      starts_((std::size_t{1} << bits_) + 1, 0)
{
    if (text.size() < piece) return;
    places_.resize(text.size() - piece + 1);
    for_each_piece(text, [this](std::size_t, std::uint32_t hash) { ++starts_[bucket(hash) + 1]; });
    for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
    // Filling moves every start to its bucket's end, which is the next one's start.
    for_each_piece(text, [this](std::size_t place, std::uint32_t hash) {
        places_[starts_[bucket(hash)]++] = static_cast<std::uint32_t>(place);
    });
    std::shift_right(starts_.begin(), starts_.end(), 1);
    starts_.front() = 0;
}

std::size_t SubstringIndex::bucket(std::uint32_t hash) const noexcept
{
    return (hash * spread) >> (32U - bits_);
}

std::vector<std::size_t> SubstringIndex::places(TextView text, TextView needle) const
{
    std::size_t rarest = 0, first = 0, last = places_.size();
    for_each_piece(needle, [&](std::size_t place, std::uint32_t hash) {
        const std::size_t begin = starts_[bucket(hash)], end = starts_[bucket(hash) + 1];
        if (end - begin >= last - first && place > 0) return;
        rarest = place;
        first = begin;
        last = end;
    });
    std::vector<std::size_t> found;
    for (std::size_t i = first; i < last; ++i) {
        const std::size_t place = places_[i];
        if (place >= rarest && text.substr(place - rarest, needle.size()) == needle) found.push_back(place - rarest);
    }
    return found;
}

} // namespace tarvik
