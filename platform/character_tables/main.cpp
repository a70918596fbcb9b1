#include "platform/text/character_tables.h"

#include <bit>
#include <cwctype>
#include <fstream>
#include <iconv.h>
#include <iostream>
#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale() is in no other
#include <string>
#include <vector>

/// Writes what this system knows of GB18030 and of letters as a source file of the program.
namespace {

using namespace tarvik;

using Table = std::vector<unsigned>;

// The editions of GB18030 disagree about 24 characters, which had places of the private area before Unicode took them
// in. Both forms are read as the character of today, and a private one is written as its two bytes always were.

constexpr OutsideCode provisional[] = {
    {0xe78d, 0xa6d9}, {0xe78e, 0xa6da}, {0xe78f, 0xa6db}, {0xe790, 0xa6dc}, {0xe791, 0xa6dd}, {0xe792, 0xa6de},
    {0xe793, 0xa6df}, {0xe794, 0xa6ec}, {0xe795, 0xa6ed}, {0xe796, 0xa6f3}, {0xe816, 0xfe51}, {0xe817, 0xfe52},
    {0xe818, 0xfe53}, {0xe81e, 0xfe59}, {0xe826, 0xfe61}, {0xe82b, 0xfe66}, {0xe82c, 0xfe67}, {0xe831, 0xfe6c},
    {0xe832, 0xfe6d}, {0xe83b, 0xfe76}, {0xe843, 0xfe7e}, {0xe854, 0xfe90}, {0xe855, 0xfe91}, {0xe864, 0xfea0},
};

struct OlderPlaces {
    std::size_t first_place;
    unsigned first_character, last_character;
};

constexpr OlderPlaces older_places[] = {{0x4a71, 0x9fb4, 0x9fbb}, {0x98a4, 0xfe10, 0xfe19}};

/// The character that a code stands for, 0 for none.
char32_t character_of(iconv_t gb18030, std::string code)
{
    std::array<char32_t, 4> result{};
    char* in = code.data();
    char* out = reinterpret_cast<char*>(result.data());
    std::size_t in_left = code.size(), out_left = sizeof(result);
    const bool converted = ::iconv(gb18030, &in, &in_left, &out, &out_left) != static_cast<std::size_t>(-1);
    if (!converted) ::iconv(gb18030, nullptr, nullptr, nullptr, nullptr);
    return converted && in_left == 0 && out_left == sizeof(result) - sizeof(char32_t) ? result[0] : U'\0';
}

void write_table(std::ostream& out, const char* name, const Table& values)
{
    out << "decltype(" << name << ") " << name << "{";
    for (std::size_t i = 0; i < values.size(); ++i) out << (i % 20 == 0 ? "\n" : "") << values[i] << ',';
    out << "};\n";
}

void write_two_byte_codes(std::ostream& out, iconv_t gb18030)
{
    Table characters(basic_plane_size - first_two_byte_code), codes(basic_plane_size);
    out << "constexpr OutsideCode outside[] = {";
    for (unsigned code = 0x8140; code <= 0xfefe; ++code) {
        const char32_t character =
            character_of(gb18030, {static_cast<char>(code / 256), static_cast<char>(code % 256)});
        if (character >= basic_plane_size) {
            out << '{' << static_cast<unsigned>(character) << ',' << code << "},";
        } else if (character != 0) {
            characters[code - first_two_byte_code] = character;
            codes[character] = code;
        }
    }
    out << "};\ndecltype(outside_codes) outside_codes = outside;\n";
    for (const OutsideCode& row : provisional)
        if (codes[row.character] == 0) codes[row.character] = row.code;
    write_table(out, "two_byte_characters", characters);
    write_table(out, "two_byte_codes", codes);
}

void write_four_byte_codes(std::ostream& out, iconv_t gb18030)
{
    Table characters(four_byte_places), places(basic_plane_size, no_place);
    for (std::size_t place = 0; place < four_byte_places; ++place) {
        const auto code = four_byte_code(place);
        const char32_t character = character_of(gb18030, {code.begin(), code.end()});
        if (character == 0 || character >= basic_plane_size) continue;
        characters[place] = character;
        places[character] = static_cast<unsigned>(place);
    }
    for (const OlderPlaces& row : older_places)
        for (unsigned character = row.first_character; character <= row.last_character; ++character) {
            unsigned& entry = characters[row.first_place + (character - row.first_character)];
            if (entry == 0) entry = character;
        }
    write_table(out, "four_byte_characters", characters);
    write_table(out, "places_of_characters", places);
}

void write_letters(std::ostream& out, const char* name, wint_t (*mapped)(wint_t, locale_t), locale_t locale)
{
    Table letters(basic_plane_size);
    for (unsigned c = 0; c < basic_plane_size; ++c) {
        const unsigned letter = mapped(c, locale);
        letters[c] = letter < basic_plane_size ? letter : c;
    }
    write_table(out, name, letters);
}

} // namespace

int main(int count, char** words)
{
    const char* const characters = std::endian::native == std::endian::little ? "UTF-32LE" : "UTF-32BE";
    const iconv_t gb18030 = ::iconv_open(characters, "GB18030");
    locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (count != 2 || gb18030 == reinterpret_cast<iconv_t>(-1) || !locale) { // NOLINT(performance-no-int-to-ptr)
        std::cerr << (count != 2 ? "usage: character_tables FILE\n"
                      : locale   ? "iconv does not know GB18030 here\n"
                                 : "the locale C.UTF-8 is missing\n");
        return 1;
    }
    std::ofstream out(words[1]);
    out << "#include \"platform/text/character_tables.h\"\nnamespace tarvik {\n";
    write_two_byte_codes(out, gb18030);
    write_four_byte_codes(out, gb18030);
    write_letters(out, "small_letters", ::towlower_l, locale);
    write_letters(out, "capital_letters", ::towupper_l, locale);
    out << "} // namespace tarvik\n";
    out.close();
    return out ? 0 : 1;
}
