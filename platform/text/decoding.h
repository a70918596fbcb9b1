#pragma once

#include "platform/text/text_builder.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

/// The loop that turns the bytes of a file into a text, for every scheme of bytes. A scheme offers
///   keeps_ascii            whether a byte below 0x80 is always the character of that number,
///   step(at, end)          the character at `at` and the bytes it takes,
///   two_bytes(at)          where keeps_ascii: the character of the two bytes, or 0 when step() must decide.
namespace tarvik {

struct Decoded {
    char32_t character = 0xfffd;
    unsigned size = 1;
};

inline const std::uint8_t* bytes_of(std::string_view bytes) noexcept
{
    return reinterpret_cast<const std::uint8_t*>(bytes.data());
}

/// Whether eight bytes lie before `end`, all of them ASCII.
inline bool eight_ascii(const std::uint8_t* at, const std::uint8_t* end) noexcept
{
    if (end - at < 8) return false;
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof(word));
    return (word & 0x8080'8080'8080'8080U) == 0;
}

/// Decodes what begins before `stop`. Ends early, with `at` on it, at a character that Char cannot hold.
template <typename Scheme, typename Char>
void decode_stretch(const Scheme& scheme, const std::uint8_t*& at, const std::uint8_t* stop, const std::uint8_t* end,
                    Char*& out)
{
    while (at < stop) {
        if constexpr (Scheme::keeps_ascii) {
            if (*at < 0x80) {
                const bool eight = eight_ascii(at, stop);
                const std::ptrdiff_t count = eight ? 8 : 1;
                out = eight ? std::copy_n(at, 8, out) : std::copy_n(at, 1, out);
                at += count;
                continue;
            }
            if (const char16_t character = end - at < 2 ? u'\0' : scheme.two_bytes(at)) {
                *out++ = character;
                at += 2;
                continue;
            }
        }
        const Decoded decoded = scheme.step(at, end);
        if (decoded.character > std::numeric_limits<Char>::max()) return;
        *out++ = static_cast<Char>(decoded.character);
        at += decoded.size;
    }
}

/// Decodes a block of bytes behind `text`. Gives how many bytes at its end were left, because they may be the beginning
/// of a character that goes on in the next block; the last block leaves none.
template <typename Scheme>
std::size_t decode_block(const Scheme& scheme, std::string_view block, bool is_last, TextBuilder& text)
{
    constexpr std::size_t longest_code = 4;
    const std::uint8_t *at = bytes_of(block), *const end = at + block.size();
    const std::uint8_t* const stop = is_last ? end : end - std::min(longest_code - 1, block.size());
    const auto decode = [&]<typename Char>(Char* begin) {
        Char* out = begin;
        decode_stretch(scheme, at, stop, end, out);
        text.added(static_cast<std::size_t>(out - begin));
    };
    while (at < stop) {
        const auto most = static_cast<std::size_t>(stop - at);
        if (text.width() < 4) decode(text.room<char16_t>(most));
        else decode(text.room<char32_t>(most));
        if (at >= stop) break;
        const Decoded beyond_basic = scheme.step(at, end);
        text.append({&beyond_basic.character, 1});
        at += beyond_basic.size;
    }
    return static_cast<std::size_t>(end - at);
}

} // namespace tarvik
