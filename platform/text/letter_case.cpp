#include "platform/text/letter_case.h"

#include "platform/text/system_characters.h"
#include "platform/text/text.h"

#include <algorithm>

namespace tarvik {

namespace {

using Mapping = std::array<char16_t, 0x10000>;

Mapping mapping_of(const std::vector<char32_t>& letters)
{
    Mapping mapping{};
    std::ranges::transform(letters, mapping.begin(), [](char32_t c) { return static_cast<char16_t>(c); });
    return mapping;
}

const Mapping& upper_table() noexcept
{
    static const Mapping table = mapping_of(capital_letters());
    return table;
}

char32_t mapped(const Mapping& mapping, char32_t character) noexcept
{
    return character < mapping.size() ? mapping[character] : character;
}

Text mapped(const Mapping& mapping, TextView text)
{
    Text result = text.str();
    for (char32_t& character : result) character = mapped(mapping, character);
    return result;
}

} // namespace

const std::array<char16_t, 0x10000>& lower_table() noexcept
{
    static const Mapping table = mapping_of(small_letters());
    return table;
}

char32_t lower(char32_t character) noexcept
{
    return mapped(lower_table(), character);
}

char32_t upper(char32_t character) noexcept
{
    return mapped(upper_table(), character);
}

Text lower(TextView text)
{
    return mapped(lower_table(), text);
}

Text upper(TextView text)
{
    return mapped(upper_table(), text);
}

} // namespace tarvik
