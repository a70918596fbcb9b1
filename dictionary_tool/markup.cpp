#include "dictionary_tool/markup.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarvik {

namespace {

constexpr std::array<std::u32string_view, 9> line_tags{U"br", U"p", U"div", U"li", U"tr", U"def", U"ex", U"ar", U"h1"};

constexpr std::array<std::pair<std::u32string_view, char32_t>, 6> entities{
    {{U"amp", U'&'}, {U"lt", U'<'}, {U"gt", U'>'}, {U"quot", U'"'}, {U"apos", U'\''}, {U"nbsp", U' '}}};

bool ends_line(TextView tag)
{
    std::size_t begin = tag.starts_with(U"/") ? 1 : 0, end = begin;
    while (end < tag.size() && tag[end] != U' ' && tag[end] != U'/') ++end;
    const Text name = lower(tag.substr(begin, end - begin));
    return std::ranges::find(line_tags, name) != line_tags.end();
}

/// The character of an entity without its "&" and ";"; 0 for one that is not known.
char32_t entity(TextView name)
{
    for (const auto& [known, character] : entities)
        if (name == TextView(known)) return character;
    if (!name.starts_with(U"#")) return 0;
    const bool hexadecimal = name.size() > 2 && lower(name[1]) == U'x';
    constexpr std::u32string_view digits = U"0123456789abcdef";
    char32_t code = 0;
    for (std::size_t i = hexadecimal ? 2 : 1; i < name.size(); ++i) {
        const std::size_t digit = digits.find(lower(name[i]));
        const std::size_t base = hexadecimal ? 16 : 10;
        if (digit >= base || code > 0x10ffff) return 0;
        code = static_cast<char32_t>(code * base + digit);
    }
    return code <= 0x10ffff ? code : 0;
}

} // namespace

Text without_markup(TextView marked_up)
{
    constexpr std::size_t longest_entity = 10;
    Text text;
    for (std::size_t i = 0; i < marked_up.size(); ++i) {
        const char32_t character = marked_up[i];
        if (character == U'<') {
            const std::size_t end = marked_up.find(U'>', i);
            if (end != npos) {
                if (ends_line(marked_up.substr(i + 1, end - i - 1)) && !text.empty() && text.back() != U'\n')
                    text += U'\n';
                i = end;
                continue;
            }
        } else if (character == U'&') {
            const std::size_t length = marked_up.substr(i, longest_entity).find(U';');
            const char32_t meant = length == npos ? 0 : entity(marked_up.substr(i + 1, length - 1));
            if (meant != 0) {
                text += meant;
                i += length;
                continue;
            }
        }
        text += character;
    }
    return text;
}

} // namespace tarvik
