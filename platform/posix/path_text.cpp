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

} // namespace tarvik
