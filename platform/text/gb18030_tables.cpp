#include "platform/text/gb18030_tables.h"

#include "platform/failure.h"
#include "platform/text/system_characters.h"

#include <utility>

namespace tarvik {

namespace {

constexpr unsigned first_two_byte_code = 0x8000;

// The editions of GB18030 disagree about 24 characters, which had places of the private area before Unicode took them
// in. Both forms are read as the character of today, and a private one is written as its two bytes always were.

struct Provisional {
    char16_t character;
    std::uint16_t code;
};

constexpr Provisional provisional[] = {
    {0xe78d, 0xa6d9}, {0xe78e, 0xa6da}, {0xe78f, 0xa6db}, {0xe790, 0xa6dc}, {0xe791, 0xa6dd}, {0xe792, 0xa6de},
    {0xe793, 0xa6df}, {0xe794, 0xa6ec}, {0xe795, 0xa6ed}, {0xe796, 0xa6f3}, {0xe816, 0xfe51}, {0xe817, 0xfe52},
    {0xe818, 0xfe53}, {0xe81e, 0xfe59}, {0xe826, 0xfe61}, {0xe82b, 0xfe66}, {0xe82c, 0xfe67}, {0xe831, 0xfe6c},
    {0xe832, 0xfe6d}, {0xe83b, 0xfe76}, {0xe843, 0xfe7e}, {0xe854, 0xfe90}, {0xe855, 0xfe91}, {0xe864, 0xfea0},
};

struct OlderPlaces {
    std::size_t first_place;
    char16_t first_character, last_character;
};

constexpr OlderPlaces older_places[] = {{0x4a71, 0x9fb4, 0x9fbb}, {0x98a4, 0xfe10, 0xfe19}};

TwoByteTable make_two_byte_table()
{
    TwoByteTable table;
    table.character.resize(first_two_byte_code);
    table.code.resize(basic_plane_size);
    const std::vector<char32_t> characters = two_byte_characters();
    table.available = !characters.empty();
    for (std::size_t place = 0; place < characters.size(); ++place) {
        const char32_t character = characters[place];
        const auto code = static_cast<std::uint16_t>(code_of_place(place));
        if (character >= basic_plane_size) {
            table.outside.push_back({character, code});
        } else if (character != 0) {
            table.character[code - first_two_byte_code] = static_cast<char16_t>(character);
            table.code[character] = code;
        }
    }
    for (const Provisional& row : provisional)
        if (table.available && table.code[row.character] == 0) table.code[row.character] = row.code;
    return table;
}

FourByteTable make_four_byte_table()
{
    FourByteTable table;
    const std::vector<char32_t> characters = four_byte_characters();
    table.character.resize(characters.size());
    table.place.resize(basic_plane_size, FourByteTable::no_place);
    for (std::size_t place = 0; place < characters.size(); ++place) {
        const char32_t character = characters[place];
        if (character == 0 || character >= basic_plane_size) continue;
        table.character[place] = static_cast<char16_t>(character);
        table.place[character] = static_cast<std::uint16_t>(place);
    }
    for (const OlderPlaces& row : older_places)
        for (unsigned c = row.first_character; c <= row.last_character; ++c) {
            char16_t& entry = table.character[row.first_place + (c - row.first_character)];
            if (entry == 0) entry = static_cast<char16_t>(c);
        }
    return table;
}

} // namespace

const TwoByteTable& two_byte_table()
{
    static const TwoByteTable table = make_two_byte_table();
    return table;
}

void require_available(const TwoByteTable& table)
{
    if (!table.available) throw Failure(U"系统没有 GB18030 编码表，中文文件无法读写。");
}

const FourByteTable& four_byte_table()
{
    static const FourByteTable table = make_four_byte_table();
    return table;
}

} // namespace tarvik
