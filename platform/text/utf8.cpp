#include "platform/text/utf8.h"

#include "platform/text/text.h"

#include <array>

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
