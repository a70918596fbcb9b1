#include "platform/text/text.h"

#include <algorithm>
#include <functional>
#include <type_traits>

/// Substring search. The usual case is a scan for places where the needle's first and last characters both fit, in
/// blocks that a compiler turns into vector code. A text made to defeat that (long repeats of one letter) would cost
/// the product of both lengths, so once the comparisons have cost too much the two-way algorithm takes over.
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

/// Where the maximal suffix of the needle begins in the order `less`, and that suffix's period.
struct Suffix {
    std::size_t start = 0, period = 1;
};

template <typename Needle, typename Less>
Suffix maximal_suffix(Characters<Needle> needle, const Less& less) noexcept
{
    Suffix best;
    std::size_t rival = 1, matched = 0;
    while (rival + matched < needle.size()) {
        const Needle a = needle[rival + matched], b = needle[best.start + matched];
        if (a == b) {
            if (++matched == best.period) {
                rival += best.period;
                matched = 0;
            }
        } else if (less(a, b)) {
            rival += matched + 1;
            matched = 0;
            best.period = rival - best.start;
        } else {
            best.start = rival++;
            best.period = 1;
            matched = 0;
        }
    }
    return best;
}

/// The needle is cut at a critical place: the right part is compared first, from left to right, and a mismatch there
/// moves the window behind it; a mismatch in the left part moves the window by the period. Linear, and no memory.
template <typename Char, typename Needle>
std::size_t two_way(Characters<Char> text, Characters<Needle> needle, std::size_t from) noexcept
{
    const std::size_t size = needle.size();
    const Suffix up = maximal_suffix(needle, std::less<Needle>()),
                 down = maximal_suffix(needle, std::greater<Needle>());
    const Suffix cut = up.start > down.start ? up : down;
    const bool periodic = cut.start + cut.period <= size &&
                          std::equal(needle.begin(), needle.begin() + static_cast<std::ptrdiff_t>(cut.start),
                                     needle.begin() + static_cast<std::ptrdiff_t>(cut.period));
    const std::size_t step = periodic ? cut.period : std::max(cut.start, size - cut.start) + 1;
    std::size_t known = 0; // characters at the window's start that are known to fit
    while (from + size <= text.size()) {
        std::size_t right = std::max(cut.start, known);
        while (right < size && text[from + right] == needle[right]) ++right;
        if (right < size) {
            from += right - cut.start + 1;
            known = 0;
            continue;
        }
        std::size_t left = cut.start;
        while (left > known && text[from + left - 1] == needle[left - 1]) --left;
        if (left <= known) return from;
        from += step;
        known = periodic ? size - step : 0;
    }
    return npos;
}

template <typename Char, typename Needle>
std::size_t find_needle(Characters<Char> text, Characters<Needle> needle, std::size_t from) noexcept
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
        if (compared > 256 + 4 * (from - begin)) return two_way(text, needle, from + 1);
    }
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

std::size_t TextView::find(TextView needle, std::size_t from) const noexcept
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

} // namespace tarvik
