#include "platform/code_page.h"

#include "platform/gb18030_tables.h"
#include "platform/utf8.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr char32_t euro_sign = 0x20ac;
constexpr int euro_code = 0x80;
constexpr int question_mark = 63;
constexpr std::size_t first_supplementary_place = 189000; // 90 30 81 30

/// Texts are encoded by stretches of so many characters.
constexpr std::size_t stretch = 1024;
constexpr std::size_t longest_code = 4;

/// The bytes of a place among the four-byte codes.
char* write_place(std::size_t place, char* out) noexcept
{
    const auto put = [&out](std::size_t byte) { *out++ = static_cast<char>(byte); };
    put(0x81 + place / 12600);
    put(0x30 + place / 1260 % 10);
    put(0x81 + place / 10 % 126);
    put(0x30 + place % 10);
    return out;
}

char* write_code(unsigned code, char* out) noexcept
{
    *out++ = static_cast<char>(code >> 8);
    *out++ = static_cast<char>(code & 0xff);
    return out;
}

/// A character that is neither ASCII nor has two bytes in the basic plane.
char* write_rare(const TwoByteTable& table, char32_t character, char* out)
{
    require_available(table);
    if (character > 0xffff && character <= last_character) {
        for (const auto& row : table.outside)
            if (row.character == character) return write_code(row.code, out);
        return write_place(first_supplementary_place + (character - 0x10000), out);
    }
    const auto& places = four_byte_table().place;
    const bool lost = is_surrogate(character) || character == replacement_character || character >= places.size();
    if (!lost && places[character] != FourByteTable::no_place) return write_place(places[character], out);
    *out++ = static_cast<char>(question_mark);
    return out;
}

/// Writes ASCII from the beginning of the text, as far as whole blocks of it go; gives how many characters.
template <typename Char>
std::size_t write_ascii(std::span<const Char> characters, char* out)
{
    constexpr std::size_t block = 16;
    std::size_t written = 0;
    for (; written + block <= characters.size(); written += block) {
        const Char* from = characters.data() + written;
        char32_t bits = 0;
        for (std::size_t i = 0; i < block; ++i) bits |= from[i];
        if (bits >= 0x80) break;
        for (std::size_t i = 0; i < block; ++i) out[written + i] = static_cast<char>(from[i]);
    }
    return written;
}

template <typename Char>
char* write_characters(const TwoByteTable& table, std::span<const Char> characters, char* out)
{
    const std::uint16_t* codes = table.code.data();
    std::size_t next_block = 0;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (i == next_block) {
            const std::size_t ascii = write_ascii(characters.subspan(i), out);
            next_block = i + std::max<std::size_t>(ascii, 16);
            out += ascii;
            i += ascii;
            if (i == characters.size()) break;
        }
        const char32_t character = characters[i];
        const std::uint16_t code = character < 0x10000 ? codes[character] : std::uint16_t{0};
        if (character < 0x80) *out++ = static_cast<char>(character);
        else if (code != 0) out = write_code(code, out);
        else out = write_rare(table, character, out);
    }
    return out;
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
    const TwoByteTable& table = two_byte_table();
    text.visit([&](auto characters) {
        char bytes[stretch *
                   longest_code]; // NOLINT(cppcoreguidelines-pro-type-member-init): filled as far as it is read
        while (!characters.empty()) {
            const auto piece = characters.first(std::min(stretch, characters.size()));
            target.append(bytes, write_characters(table, piece, bytes));
            characters = characters.subspan(piece.size());
        }
    });
}

char* encode_into(TextView text, char* target)
{
    const TwoByteTable& table = two_byte_table();
    return text.visit([&](auto characters) { return write_characters(table, characters, target); });
}

int char_code(char32_t character) noexcept
{
    if (character < 0x80) return static_cast<int>(character);
    if (character == euro_sign) return euro_code;
    const auto& codes = gbk_codes();
    const int code = character < codes.size() ? codes[character] : 0;
    return code == 0 ? question_mark : code - 0x10000;
}

} // namespace tarvik
