#include "platform/files/path_text.h"

#include "platform/text/utf8.h"

namespace tarvik {

// A name may hold lone surrogates: they show as U+FFFD.
Text text_of(const std::filesystem::path& path)
{
    const std::wstring& units = path.native();
    Text text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t unit = units[i];
        const char32_t next = i + 1 < units.size() ? units[i + 1] : U'\0';
        if (!is_surrogate(unit)) {
            text += unit;
        } else if (is_high_surrogate(unit) && is_low_surrogate(next)) {
            text += joined(unit, next);
            ++i;
        } else {
            text += replacement_character;
        }
    }
    return text;
}

std::filesystem::path path_of(TextView text)
{
    Text valid = text.str();
    for (char32_t& character : valid)
        if (is_surrogate(character) || character > last_character) character = replacement_character;
    return {valid};
}

std::string utf8_of(const std::filesystem::path& path)
{
    return to_utf8(text_of(path));
}

std::filesystem::path path_of_utf8(std::string_view utf8)
{
    return path_of(from_utf8(utf8));
}

} // namespace tarvik
