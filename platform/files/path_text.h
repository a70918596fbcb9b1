#pragma once

#include "platform/text/text.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Paths of the system as texts and back. What the disk holds is bytes on one system and 16-bit units on another; no
/// other conversion is right on both.
namespace tarvik {

Text text_of(const std::filesystem::path& path);
std::filesystem::path path_of(TextView text);

/// On a system whose names are bytes, these bytes as they are.
std::string utf8_of(const std::filesystem::path& path);
std::filesystem::path path_of_utf8(std::string_view utf8);

constexpr bool is_separator(char32_t character) noexcept
{
    return character == U'\\' || character == U'/';
}
/// The names between the separators, none of them empty.
std::vector<Text> names_of(TextView path);

} // namespace tarvik
