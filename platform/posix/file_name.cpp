#include "platform/files/file_name.h"

namespace tarvik {

const std::size_t longest_name = 255;

// In bytes of UTF-8.
std::size_t name_size(char32_t character) noexcept
{
    return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

bool is_usable_name(TextView /*name*/)
{
    return true;
}

Text usable_name(Text name)
{
    return name;
}

} // namespace tarvik
