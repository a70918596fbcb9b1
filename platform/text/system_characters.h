#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// What the system knows of characters: what the codes of GB18030 stand for, and which letters are one in two cases.
/// Where it has no such tables they are a copy, made when the program was built.
namespace tarvik {

inline constexpr unsigned first_lead = 0x81, last_lead = 0xfe, first_second = 0x40, last_second = 0xfe;
inline constexpr std::size_t basic_plane_size = 0x10000;
inline constexpr std::size_t four_byte_places = 39420; ///< from 81 30 81 30 up to 84 31 A4 39

/// Lead byte * 256 + second byte of the code at a place of two_byte_characters().
constexpr unsigned code_of_place(std::size_t place) noexcept
{
    constexpr unsigned width = last_second - first_second + 1;
    const auto number = static_cast<unsigned>(place);
    return (first_lead + number / width) * 256 + first_second + number % width;
}

/// The bytes of the four-byte code at a place, which counts from 0 for 81 30 81 30.
constexpr std::array<std::uint8_t, 4> four_byte_code(std::size_t place) noexcept
{
    const auto byte = [](std::size_t value) { return static_cast<std::uint8_t>(value); };
    return {byte(0x81 + place / 12600), byte(0x30 + place / 1260 % 10), byte(0x81 + place / 10 % 126),
            byte(0x30 + place % 10)};
}

/// By code in ascending order, 0 for none; empty when the system does not know GB18030.
std::vector<char32_t> two_byte_characters();
/// Always four_byte_places of them; 0 for none.
std::vector<char32_t> four_byte_characters();

/// By character of the basic plane, what it is as a small or as a capital letter, in the basic plane too.
std::vector<char32_t> small_letters();
std::vector<char32_t> capital_letters();

} // namespace tarvik
