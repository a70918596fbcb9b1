#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// The tables of GB18030, taken from the system once, when they are first needed. Only this module asks the system
/// about character sets.
namespace tarvik {

/// CP936 has the euro sign at a place of its own, a single byte.
inline constexpr char32_t euro_sign = 0x20ac;
inline constexpr int euro_code = 0x80;

/// The place of 90 30 81 30 among the four-byte codes, from which on they stand for the characters behind the basic
/// plane.
inline constexpr std::size_t first_supplementary_place = 189000;

/// Codes are lead byte * 256 + second byte.
struct TwoByteTable {
    struct Supplementary {
        char32_t character;
        std::uint16_t code;
    };

    bool available = false;             ///< false when the system does not know GB18030; all else is 0 then
    std::vector<char16_t> character;    ///< by code - 0x8000, for the basic plane; 0 for none
    std::vector<std::uint16_t> code;    ///< by character of the basic plane; 0 for none
    std::vector<Supplementary> outside; ///< the few two-byte codes that stand for characters outside of it
};

/// Places are the four-byte codes of the basic plane in their order, counted from 0 for 81 30 81 30.
struct FourByteTable {
    static constexpr std::uint16_t no_place = 0xffff;

    std::vector<char16_t> character;  ///< by place; 0 for none
    std::vector<std::uint16_t> place; ///< by character of the basic plane
};

const TwoByteTable& two_byte_table();
/// Throws Failure when the system could not supply the table.
void require_available(const TwoByteTable& table);
const FourByteTable& four_byte_table();

} // namespace tarvik
