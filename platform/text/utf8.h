#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

/// One step of UTF-8, for texts and for files, and the surrogates of UTF-16.
namespace tarvik {

inline constexpr char32_t replacement_character = 0xfffd;
inline constexpr char32_t last_character = 0x10ffff;

constexpr bool is_surrogate(char32_t character) noexcept
{
    return character >= 0xd800 && character <= 0xdfff;
}

constexpr bool is_high_surrogate(char32_t unit) noexcept
{
    return unit >= 0xd800 && unit <= 0xdbff;
}

constexpr bool is_low_surrogate(char32_t unit) noexcept
{
    return unit >= 0xdc00 && unit <= 0xdfff;
}

/// The character that a high and a low surrogate write together.
constexpr char32_t joined(char32_t high, char32_t low) noexcept
{
    return 0x10000 + ((high - 0xd800) << 10U) + (low - 0xdc00);
}

/// What is no character, a surrogate among them, becomes the replacement character.
void append_utf8(char32_t character, std::string& bytes);

struct Utf8Step {
    char32_t character = replacement_character;
    unsigned size = 1; ///< bytes taken; an invalid byte is taken alone
    bool valid = false;
};

/// The character at `at`, which lies before `end`. Overlong forms, surrogates and cut sequences are invalid.
inline Utf8Step utf8_step(const std::uint8_t* at, const std::uint8_t* end) noexcept
{
    const std::uint8_t lead = *at;
    if (lead < 0x80) return {lead, 1, true};
    if (lead < 0xc2 || lead > 0xf4) return {};
    if ((lead & 0xf0) == 0xe0 && end - at >= 3) { // the usual Chinese character, without a loop
        const unsigned second = at[1] ^ 0x80U, third = at[2] ^ 0x80U;
        const char32_t character = (lead & 0xfU) << 12 | second << 6 | third;
        const bool valid = (second | third) < 0x40 && character >= 0x800 && !is_surrogate(character);
        return valid ? Utf8Step{character, 3, true} : Utf8Step{};
    }
    const unsigned size = lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    if (static_cast<std::size_t>(end - at) < size) return {};
    char32_t character = lead & (0x7fU >> size);
    for (unsigned i = 1; i < size; ++i) {
        if ((at[i] & 0xc0) != 0x80) return {};
        character = (character << 6) | (at[i] & 0x3fU);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (character < smallest[size] || character > last_character || is_surrogate(character)) return {};
    return {character, size, true};
}

/// Whether eight bytes lie before `end`, all of them ASCII.
inline bool eight_ascii(const std::uint8_t* at, const std::uint8_t* end) noexcept
{
    if (end - at < 8) return false;
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof(word));
    return (word & 0x8080'8080'8080'8080U) == 0;
}

} // namespace tarvik
