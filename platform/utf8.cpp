#include "platform/utf8.h"

#include "platform/text.h"

#include <array>

namespace tarvik {

void append_utf8(char32_t character, std::string& bytes)
{
    if (character < 0x80) {
        bytes += static_cast<char>(character);
        return;
    }
    if (is_surrogate(character) || character > last_character) character = replacement_character;
    const unsigned size = character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
    constexpr char32_t leads[] = {0, 0, 0xc0, 0xe0, 0xf0};
    std::array<char, 4> written{};
    for (unsigned i = size - 1; i > 0; --i, character >>= 6U)
        written[i] = static_cast<char>(0x80U | (character & 0x3fU));
    written[0] = static_cast<char>(leads[size] | character);
    bytes.append(written.data(), size);
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
    std::string bytes;
    bytes.reserve(text.size());
    text.visit([&bytes](auto characters) {
        for (const char32_t character : characters) append_utf8(character, bytes);
    });
    return bytes;
}

} // namespace tarvik
