#include "reading/dictionary_layout.h"

#include "platform/text/code_page.h"

namespace tarvik {

bool belongs_to_other_file(char32_t first)
{
    return char_code(first) < ')';
}

std::optional<Text> english_letter_file(char32_t first)
{
    if (first < U'a' || first > U'z') return std::nullopt;
    return U"牛津字典" + Text(1, upper(first)) + U".TXT";
}

} // namespace tarvik
