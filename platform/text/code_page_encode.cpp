#include "platform/text/code_page.h"

#include "platform/text/character_tables.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

constexpr int question_mark = 63;

/// Texts are encoded by stretches of so many characters.
constexpr std::size_t stretch = 1024;
constexpr std::size_t longest_code = 4;

char* write_place(std::size_t place, char* out) noexcept
{
    for (const std::uint8_t byte : four_byte_code(place)) *out++ = static_cast<char>(byte);
    return out;
}

char* write_code(unsigned code, char* out) noexcept
{
    *out++ = static_cast<char>(code >> 8);
    *out++ = static_cast<char>(code & 0xff);
    return out;
}

/// A character that is neither ASCII nor has two bytes in the basic plane.
char* write_rare(char32_t character, char* out) noexcept
{
    if (character > 0xffff && character <= last_character) {
        for (const OutsideCode& row : outside_codes)
            if (row.character == character) return write_code(row.code, out);
        return write_place(first_supplementary_place + (character - 0x10000), out);
    }
    const bool lost = is_surrogate(character) || character == replacement_character || character > last_character;
    if (!lost && places_of_characters[character] != no_place) return write_place(places_of_characters[character], out);
    *out++ = static_cast<char>(question_mark);
    return out;
}

/// `out` has room for one byte more than the codes take: one and two bytes are written without a branch between them.
template <typename Char>
char* write_one_by_one(std::span<const Char> characters, char* out) noexcept
{
    for (const char32_t character : characters) {
        const bool ascii = character < 0x80;
        const std::uint16_t code = character < basic_plane_size ? two_byte_codes[character] : std::uint16_t{0};
        if (code == 0 && !ascii) {
            out = write_rare(character, out);
            continue;
        }
        out[0] = static_cast<char>(ascii ? character : code >> 8);
        out[1] = static_cast<char>(code & 0xff);
        out += ascii ? 1 : 2;
    }
    return out;
}

template <typename Char>
char* write_characters(std::span<const Char> characters, char* out) noexcept
{
    constexpr std::size_t block = 8;
    for (; characters.size() >= block; characters = characters.subspan(block)) {
        const Char* from = characters.data();
        char32_t bits = 0;
        for (std::size_t i = 0; i < block; ++i) bits |= from[i];
        if (bits >= 0x80) {
            out = write_one_by_one(characters.first(block), out);
            continue;
        }
        for (std::size_t i = 0; i < block; ++i) out[i] = static_cast<char>(from[i]);
        out += block;
    }
    return write_one_by_one(characters, out);
}

/// Codes of two bytes, first and last, that GB18030 has added to those of GBK.
constexpr std::pair<int, int> added_codes[] = {{0xa6d9, 0xa6df}, {0xa6ec, 0xa6ed}, {0xa6f3, 0xa6f3}, {0xa8bc, 0xa8bc},
                                               {0xa8bf, 0xa8bf}, {0xa989, 0xa995}, {0xfe50, 0xfea0}};

/// The bytes of one unit of UTF-16.
void append_unit(char32_t unit, bool big_endian, std::string& bytes)
{
    const char high = static_cast<char>(unit >> 8U), low = static_cast<char>(unit & 0xffU);
    bytes += big_endian ? high : low;
    bytes += big_endian ? low : high;
}

std::string encode_utf16(const Text& text, bool big_endian)
{
    std::string bytes;
    for (const char32_t character : text) {
        if (character > 0xffff) append_unit(0xd800 + ((character - 0x10000) >> 10U), big_endian, bytes);
        append_unit(character > 0xffff ? 0xdc00 + (character & 0x3ffU) : character, big_endian, bytes);
    }
    return bytes;
}

} // namespace

std::string encode(TextView text)
{
    std::string bytes;
    encode_to(text, bytes);
    return bytes;
}

void encode_to(TextView text, std::string& target)
{
    text.visit([&](auto characters) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): filled as far as it is read
        char bytes[stretch * longest_code];
        while (!characters.empty()) {
            const auto piece = characters.first(std::min(stretch, characters.size()));
            target.append(bytes, write_characters(piece, bytes));
            characters = characters.subspan(piece.size());
        }
    });
}

std::string encode_behind(const ForeignText& file, TextView text)
{
    Text lines = text.str();
    if (file.lines_ended_in_lf) std::erase(lines, U'\r');
    if (file.encoding == U"UTF-8") return to_utf8(lines);
    const bool big_endian = file.encoding == U"UTF-16BE";
    return big_endian || file.encoding == U"UTF-16LE" ? encode_utf16(lines, big_endian) : encode(lines);
}

int char_code(char32_t character) noexcept
{
    if (character < 0x80) return static_cast<int>(character);
    if (character == euro_sign) return euro_code;
    const int code = character < basic_plane_size ? two_byte_codes[character] : 0;
    const bool is_private = character >= 0xe000 && character <= 0xf8ff;
    const bool is_added = std::ranges::any_of(
        added_codes, [code](const auto& range) { return code >= range.first && code <= range.second; });
    return code == 0 || is_private || is_added ? question_mark : code - 0x10000;
}

} // namespace tarvik
