#pragma once

#include "platform/background.h"
#include "platform/text/document.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

/// The loop that turns the bytes of a file into a document, for every scheme of bytes. A scheme offers
///   keeps_ascii            whether a byte below 0x80 is always the character of that number,
///   expected(bytes)        about how many characters there will be,
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

/// Decodes behind what `target` holds, up to `end` or a character that Char cannot hold; returns where it stopped.
template <typename Scheme, typename Char>
const std::uint8_t* decode_behind(const Scheme& scheme, const std::uint8_t* at, const std::uint8_t* end,
                                  std::basic_string<Char>& target, std::size_t expected)
{
    constexpr std::ptrdiff_t stretch = 4096;
    std::size_t used = target.size();
    target.reserve(std::max(expected, used) + static_cast<std::size_t>(std::min(stretch, end - at)));
    for (;;) {
        const std::ptrdiff_t count = std::min(stretch, end - at); // so many characters at most
        const std::size_t room = used + static_cast<std::size_t>(count);
        if (target.capacity() < room)
            target.reserve(
                std::max(room, std::min(target.capacity() / 4 * 5, used + static_cast<std::size_t>(end - at))));
        target.resize(room); // no more at once, so that it stays near the processor until it is filled
        const std::uint8_t* stop = at + count;
        Char* out = target.data() + used;
        decode_stretch(scheme, at, stop, end, out);
        used = static_cast<std::size_t>(out - target.data());
        if (at < stop || at == end) break;
    }
    target.resize(used);
    return at;
}

/// Where a large text may be cut in two that are decoded at once: behind a line feed, which is no part of another
/// character. The end of any other text.
template <typename Scheme>
std::size_t middle_line_end(std::string_view bytes) noexcept
{
    constexpr std::size_t worth_a_thread = std::size_t{1} << 20;
    if (!Scheme::keeps_ascii || bytes.size() < worth_a_thread) return bytes.size();
    const std::size_t line_feed = bytes.find('\n', bytes.size() / 2);
    return line_feed == std::string_view::npos ? bytes.size() : line_feed + 1;
}

/// Decodes up to the end or a character beyond the basic plane; returns where it stopped.
template <typename Scheme>
const std::uint8_t* decode_basic(const Scheme& scheme, std::string_view bytes, std::u16string& target,
                                 std::size_t expected)
{
    const std::size_t cut = middle_line_end<Scheme>(bytes), left = bytes.size() - cut;
    const std::uint8_t* const middle = bytes_of(bytes) + cut;
    std::u16string rest;
    auto decoding = in_background(
        [&] {
            return decode_behind(scheme, middle, middle + left, rest, left > 0 ? expected * left / bytes.size() : 0);
        },
        left > 0);
    const std::uint8_t* const at = decode_behind(scheme, bytes_of(bytes), middle, target, expected);
    const std::uint8_t* const rest_at = decoding.get();
    if (at != middle) return at;
    target += rest;
    return rest_at;
}

/// The document of these bytes in the narrowest width, with a CR LF behind its text in the buffer.
template <typename Scheme>
Document decoded_document(const Scheme& scheme, std::string_view bytes)
{
    const std::uint8_t* const end = bytes_of(bytes) + bytes.size();
    const std::size_t expected = scheme.expected(bytes) + 2;
    std::u16string basic;
    const std::uint8_t* const at = decode_basic(scheme, bytes, basic, expected);
    if (at == end) {
        const std::size_t size = basic.size();
        basic += u"\r\n";
        char16_t bits = 0;
        for (const char16_t character : basic) bits |= character;
        if (bits <= 0xff) return {make_buffer(TextView(basic.data(), basic.size())), size};
        return {std::make_shared<const TextBuffer>(std::move(basic)), size};
    }
    Text wide;
    wide.reserve(expected);
    wide.append(basic.begin(), basic.end());
    basic = {};
    decode_behind(scheme, at, end, wide, expected);
    const std::size_t size = wide.size();
    wide += U"\r\n";
    return {std::make_shared<const TextBuffer>(std::move(wide)), size};
}

} // namespace tarvik
