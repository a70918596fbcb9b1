#include "platform/text/system_characters.h"

namespace tarvik {

// Written by platform/character_tables when the program is built.
extern const char32_t gb18030_two_bytes[], gb18030_four_bytes[], small_of[], capital_of[];
extern const std::size_t gb18030_two_bytes_size, gb18030_four_bytes_size;

std::vector<char32_t> two_byte_characters()
{
    return {gb18030_two_bytes, gb18030_two_bytes + gb18030_two_bytes_size};
}

std::vector<char32_t> four_byte_characters()
{
    return {gb18030_four_bytes, gb18030_four_bytes + gb18030_four_bytes_size};
}

std::vector<char32_t> small_letters()
{
    return {small_of, small_of + basic_plane_size};
}

std::vector<char32_t> capital_letters()
{
    return {capital_of, capital_of + basic_plane_size};
}

} // namespace tarvik
