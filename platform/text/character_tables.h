#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// What codes and letters stand for: platform/character_tables writes the tables when the program is built, from what
/// that system knows, so that every program reads and writes the same bytes.
namespace tarvik {

inline constexpr std::size_t basic_plane_size = 0x10000;

/// CP936 has the euro sign at a place of its own, a single byte.
inline constexpr char32_t euro_sign = 0x20ac;
inline constexpr int euro_code = 0x80;

// Two-byte codes of GB18030 are lead byte * 256 + second byte.

inline constexpr unsigned first_two_byte_code = 0x8000;
/// By code less the first one, those of the basic plane; 0 for none.
extern const std::array<char16_t, basic_plane_size - first_two_byte_code> two_byte_characters;
/// By character of the basic plane; 0 for none.
extern const std::array<std::uint16_t, basic_plane_size> two_byte_codes;

struct OutsideCode {
    char32_t character;
    std::uint16_t code;
};
/// The few two-byte codes that stand for characters outside of the basic plane.
extern const std::span<const OutsideCode> outside_codes;

// The place of a four-byte code is its number in their order, counted from 0 for 81 30 81 30. Those of the basic plane
// come first; from 90 30 81 30 on they stand for the characters behind it.

inline constexpr std::size_t four_byte_places = 39420, first_supplementary_place = 189000;
inline constexpr std::uint16_t no_place = 0xffff;
/// By place; 0 for none.
extern const std::array<char16_t, four_byte_places> four_byte_characters;
/// By character of the basic plane.
extern const std::array<std::uint16_t, basic_plane_size> places_of_characters;

constexpr std::array<std::uint8_t, 4> four_byte_code(std::size_t place) noexcept
{
    const auto byte = [](std::size_t value) { return static_cast<std::uint8_t>(value); };
    return {byte(0x81 + place / 12600), byte(0x30 + place / 1260 % 10), byte(0x81 + place / 10 % 126),
            byte(0x30 + place % 10)};
}

/// By character of the basic plane, what it is as a small or as a capital letter, in the basic plane too.
extern const std::array<char16_t, basic_plane_size> small_letters, capital_letters;

} // namespace tarvik
