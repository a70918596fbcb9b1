#include "platform/utf8.h"

#include "platform/text.h"

namespace tarvik {

void append_utf8(char32_t character, std::string& bytes)
{
    if (is_surrogate(character) || character > last_character) character = replacement_character;
    const auto tail = [&bytes, character](unsigned shift) {
        bytes += static_cast<char>(0x80U | ((character >> shift) & 0x3fU));
    };
    if (character < 0x80) {
        bytes += static_cast<char>(character);
    } else if (character < 0x800) {
        bytes += static_cast<char>(0xc0U | (character >> 6));
        tail(0);
    } else if (character < 0x10000) {
        bytes += static_cast<char>(0xe0U | (character >> 12));
        tail(6);
        tail(0);
    } else {
        bytes += static_cast<char>(0xf0U | (character >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
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
