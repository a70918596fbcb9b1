#include "platform/files/file_name.h"
#include "platform/files/path_text.h"

namespace tarvik {

Text text_of(const std::filesystem::path& path)
{
    return from_utf8(path.native());
}

std::filesystem::path path_of(TextView text)
{
    return {to_utf8(text)};
}

std::string utf8_of(const std::filesystem::path& path)
{
    return path.native();
}

std::filesystem::path path_of_utf8(std::string_view utf8)
{
    return {utf8};
}

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
