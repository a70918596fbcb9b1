#include "platform/text/text_search.h"

#include <algorithm>
#include <bit>
#include <type_traits>

/// Substring search. The usual case is a scan for places where the needle's first and last characters both fit, in
/// blocks that a compiler turns into vector code. A text made to defeat that (long repeats of one letter) would cost
/// the product of both lengths, so once the comparisons have cost too much the text is read character by character.
namespace tarvik {

namespace {

template <typename Char>
using Characters = std::span<const Char>;

constexpr std::size_t block = 32;

/// The first place at or behind `from` and before `end` for which `fits(place)` holds, or `end`. `fits` must be cheap
/// and free of branches.
template <typename Fits>
std::size_t scan(std::size_t from, std::size_t end, const Fits& fits) noexcept
{
    for (; from + block <= end; from += block) {
        unsigned any = 0;
        for (std::size_t i = 0; i < block; ++i) any |= static_cast<unsigned>(fits(from + i));
        if (any != 0) break;
    }
    while (from < end && !fits(from)) ++from;
    return from;
}

template <typename Char>
std::size_t find_character(Characters<Char> text, Char character, std::size_t from) noexcept
{
    if constexpr (sizeof(Char) == 1) {
        if (from >= text.size()) return npos;
        const void* place = std::memchr(text.data() + from, character, text.size() - from);
        return place ? static_cast<std::size_t>(static_cast<const Char*>(place) - text.data()) : npos;
    } else {
        const Char* characters = text.data();
        const std::size_t place =
            scan(from, text.size(), [=](std::size_t i) noexcept { return characters[i] == character; });
        return place < text.size() ? place : npos;
    }
}

/// How much of the needle is matched when one character more of the text is read.
template <typename Needle>
std::size_t matched_with(char32_t character, const Needle& needle, const std::vector<std::size_t>& borders,
                         std::size_t matched) noexcept
{
    while (matched > 0 && needle[matched] != character) matched = borders[matched - 1];
    return needle[matched] == character ? matched + 1 : 0;
}

/// For each beginning of a needle, the length of its longest proper border: a beginning that is its end too.
std::vector<std::size_t> borders_of(TextView needle)
{
    std::vector<std::size_t> borders(needle.size(), 0);
    for (std::size_t i = 1; i < needle.size(); ++i)
        borders[i] = matched_with(needle[i], needle, borders, borders[i - 1]);
    return borders;
}

/// Linear whatever text and needle hold.
template <typename Char, typename Needle>
std::size_t find_by_borders(Characters<Char> text, Characters<Needle> needle, std::size_t from)
{
    const std::vector<std::size_t> borders = borders_of({needle.data(), needle.size()});
    std::size_t matched = 0;
    for (; from < text.size(); ++from) {
        matched = matched_with(text[from], needle, borders, matched);
        if (matched == needle.size()) return from + 1 - matched;
    }
    return npos;
}

template <typename Char, typename Needle>
std::size_t find_needle(Characters<Char> text, Characters<Needle> needle, std::size_t from)
{
    const std::size_t size = needle.size(), end = text.size() - size + 1;
    const Char* first_place = text.data();
    const Char* last_place = text.data() + (size - 1);
    const Needle first = needle.front(), last = needle.back();
    const std::size_t begin = from;
    std::size_t compared = 0;
    for (;; ++from) {
        from = scan(from, end,
                    [=](std::size_t i) noexcept { return (first_place[i] == first) & (last_place[i] == last); });
        if (from == end) return npos;
        std::size_t same = 1;
        while (same < size && first_place[from + same] == needle[same]) ++same;
        if (same == size) return from;
        compared += same + 8; // a scan that ends at once is not free either
        if (compared > 256 + 4 * (from - begin)) return find_by_borders(text, needle, from + 1);
    }
}

// The index

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

std::size_t TextView::find(char32_t character, std::size_t from) const noexcept
{
    return visit([character, from](auto text) -> std::size_t {
        using Char = std::remove_const_t<typename decltype(text)::element_type>;
        if (static_cast<char32_t>(static_cast<Char>(character)) != character) return npos;
        return find_character<Char>(text, static_cast<Char>(character), from);
    });
}

std::size_t TextView::find(TextView needle, std::size_t from) const
{
    if (from > size() || needle.size() > size() - from) return npos;
    if (needle.empty()) return from;
    if (needle.size() == 1) return find(needle[0], from);
    return visit([needle, from](auto text) {
        return needle.visit([text, from](auto searched) {
            using Char = std::remove_const_t<typename decltype(text)::element_type>;
            using Needle = std::remove_const_t<typename decltype(searched)::element_type>;
            return find_needle<Char, Needle>(text, searched, from);
        });
    });
}

Occurrences::Occurrences(TextView text, TextView needle)
    : text_(text), needle_(needle.str()), borders_(borders_of(needle_))
{
}

std::size_t Occurrences::next()
{
    if (needle_.empty()) return npos;
    std::size_t place = matched_ > 0 ? follow_overlap() : npos;
    if (place == npos) {
        place = text_.find(needle_, read_);
        read_ = place == npos ? text_.size() : place + needle_.size();
    }
    matched_ = place == npos ? 0 : borders_.back();
    return place;
}

// An occurrence that overlaps the one before shares a border with it. As long as one may be under way the text is read
// character by character; the fast search would compare the shared part again and again.
std::size_t Occurrences::follow_overlap()
{
    return text_.visit([this](auto characters) {
        while (matched_ > 0 && read_ < characters.size()) {
            matched_ = matched_with(characters[read_++], needle_, borders_, matched_);
            if (matched_ == needle_.size()) return read_ - needle_.size();
        }
        return npos;
    });
}

std::size_t Occurrences::at_or_behind(std::size_t from)
{
    if (started_ && (current_ == npos || current_ >= from)) return current_;
    if (from >= read_) {
        read_ = std::min(from, text_.size());
        matched_ = 0;
    }
    started_ = true;
    do {
        current_ = next();
    } while (current_ != npos && current_ < from);
    return current_;
}

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
