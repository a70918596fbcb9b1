#include "desktop/line_breaking.h"

#include <string_view>

namespace tarvik {

namespace {

constexpr std::u32string_view closing = U"!),.:;?]}。，、；：？！）】》」』”’〕〉］｝…—％℃";
constexpr std::u32string_view opening = U"([{（【《「『“‘〔〈［｛￥$";

constexpr bool is_blank(char32_t character)
{
    return character == U' ' || character == U'\t' || character == U'\u3000';
}

// From the radicals on, scripts are written without blanks between words.
constexpr bool is_wide(char32_t character)
{
    return character >= 0x2e80;
}

constexpr bool holds(std::u32string_view set, char32_t character)
{
    return set.find(character) != std::u32string_view::npos;
}

} // namespace

bool may_break_between(char32_t before, char32_t after)
{
    if (is_blank(after)) return false; // blanks hang over the edge
    if (is_blank(before)) return true;
    if (holds(closing, after) || holds(opening, before)) return false;
    return before == U'-' || is_wide(before) || is_wide(after) || holds(closing.substr(9), before);
}

} // namespace tarvik
