#include "platform/text/text.h"

#include "platform/text/character_tables.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace tarvik {

namespace {

constexpr std::size_t longest_utf8 = 4;

/// Gives the end of what was written.
char* write_utf8(char32_t character, char* target) noexcept
{
    if (character < 0x80) {
        *target = static_cast<char>(character);
        return target + 1;
    }
    if (is_surrogate(character) || character > last_character) character = replacement_character;
    const unsigned size = character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
    constexpr std::array<char32_t, longest_utf8 + 1> leads{0, 0, 0xc0, 0xe0, 0xf0};
    for (unsigned i = size - 1; i > 0; --i, character >>= 6U)
        target[i] = static_cast<char>(0x80U | (character & 0x3fU));
    *target = static_cast<char>(leads[size] | character);
    return target + size;
}

} // namespace

std::size_t TextView::rfind(char32_t character) const noexcept
{
    return visit([character](auto text) -> std::size_t {
        for (std::size_t i = text.size(); i > 0; --i)
            if (text[i - 1] == character) return i - 1;
        return npos;
    });
}

Text TextView::str() const
{
    Text text;
    append_to(text);
    return text;
}

void TextView::append_to(Text& target) const
{
    visit([&target](auto text) {
        if constexpr (sizeof(text[0]) == sizeof(char32_t)) target.append(text.data(), text.size());
        else target.append(text.begin(), text.end());
    });
}

std::size_t TextView::hash() const noexcept
{
    // Four characters at a time with independent products, so that rows hash at memory speed; the products see the
    // characters and not their storage, so that the width leaves no trace.
    constexpr std::array<std::uint64_t, 4> odd{0x9e37'79b9'7f4a'7c15U, 0xc2b2'ae3d'27d4'eb4fU, 0x1656'67b1'9e37'79f9U,
                                               0x85eb'ca77'c2b2'ae63U};
    // Of a very long text, as a document without line ends has them for rows, both ends and the length tell enough.
    constexpr std::size_t end_hashed = 1024, longest_hashed = 4 * end_hashed;
    if (size() > longest_hashed) {
        const std::size_t ends = substr(0, end_hashed).hash() * 31 + substr(size() - end_hashed).hash();
        return ends ^ (size() * odd[0]);
    }
    return visit([&odd](auto text) {
        std::uint64_t state = text.size() * odd[0];
        const auto stir = [&state](std::uint64_t value) {
            state = (state ^ value) * 0x2545'f491'4f6c'dd1dU;
            state ^= state >> 29;
        };
        std::size_t i = 0;
        for (; i + 4 <= text.size(); i += 4)
            stir((text[i] + odd[3]) * odd[0] + (text[i + 1] + odd[0]) * odd[1] + (text[i + 2] + odd[1]) * odd[2] +
                 (text[i + 3] + odd[2]) * odd[3]);
        for (; i < text.size(); ++i) stir((text[i] + odd[3]) * odd[1]);
        return static_cast<std::size_t>(state ^ (state >> 32));
    });
}

bool operator==(TextView a, TextView b) noexcept
{
    if (a.size() != b.size()) return false;
    if (a.empty()) return true;
    if (a.width() == b.width())
        return a.data() == b.data() || std::memcmp(a.data(), b.data(), a.size() * a.width()) == 0;
    return a.visit([b](auto left) {
        return b.visit([left](auto right) { return std::equal(left.begin(), left.end(), right.begin()); });
    });
}

Text operator+(Text left, TextView right)
{
    right.append_to(left);
    return left;
}

TextView mid(TextView text, std::size_t position, std::size_t count) noexcept
{
    if (position == 0) return {};
    return text.substr(position - 1, count);
}

std::size_t instr(TextView text, TextView needle, std::size_t from)
{
    if (needle.empty()) return 0;
    // npos + 1 is 0.
    return text.find(needle, from == 0 ? 0 : from - 1) + 1;
}

TextView ltrim(TextView text) noexcept
{
    std::size_t blanks = 0;
    while (blanks < text.size() && text[blanks] == U' ') ++blanks;
    return text.substr(blanks);
}

TextView rtrim(TextView text) noexcept
{
    std::size_t size = text.size();
    while (size > 0 && text[size - 1] == U' ') --size;
    return text.substr(0, size);
}

TextView trim(TextView text) noexcept
{
    return ltrim(rtrim(text));
}

char32_t lower(char32_t character) noexcept
{
    return character < basic_plane_size ? small_letters[character] : character;
}

char32_t upper(char32_t character) noexcept
{
    return character < basic_plane_size ? capital_letters[character] : character;
}

Text lower(TextView text)
{
    Text small = text.str();
    for (char32_t& character : small) character = lower(character);
    return small;
}

Text upper(TextView text)
{
    Text capital = text.str();
    for (char32_t& character : capital) character = upper(character);
    return capital;
}

void append_utf8(char32_t character, std::string& bytes)
{
    std::array<char, longest_utf8> written{};
    const char* const end = write_utf8(character, written.data());
    bytes.append(static_cast<const char*>(written.data()), end);
}

Text from_utf8(std::string_view bytes)
{
    Text text;
    text.reserve(bytes.size());
    const auto* at = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const auto* end = at + bytes.size();
    while (at != end) {
        const Utf8Step step = utf8_step(at, end);
        text += step.character;
        at += step.size;
    }
    return text;
}

std::string to_utf8(TextView text)
{
    std::string bytes(text.size() * longest_utf8, '\0');
    char* end = bytes.data();
    text.visit([&end](auto characters) {
        for (const char32_t character : characters) end = write_utf8(character, end);
    });
    bytes.resize(static_cast<std::size_t>(end - bytes.data()));
    return bytes;
}

} // namespace tarvik
