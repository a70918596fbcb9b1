#include "platform/files/paths.h"

namespace tarvik {

namespace {

constexpr std::u32string_view forbidden = U"\\/:*?\"<>|";
constexpr std::size_t longest_extension = 8;

/// Controls, and the marks that turn the direction of writing: a name that holds one looks like another.
bool is_hidden(char32_t character) noexcept
{
    const auto lies = [&](char32_t first, char32_t last) { return character >= first && character <= last; };
    return lies(0, 0x1f) || lies(0x7f, 0x9f) || lies(0x202a, 0x202e) || lies(0x2066, 0x2069);
}

} // namespace

std::vector<Text> names_of(TextView path)
{
    std::vector<Text> names(1);
    for (std::size_t i = 0; i < path.size(); ++i) {
        const char32_t character = path[i];
        if (!is_separator(character)) names.back() += character;
        else if (!names.back().empty()) names.emplace_back();
    }
    if (names.back().empty()) names.pop_back();
    return names;
}

PathParts split_path(TextView path)
{
    std::size_t start = path.size();
    while (start > 0 && !is_separator(path[start - 1])) --start;
    return {path.substr(0, start), path.substr(start)};
}

NameParts split_extension(TextView name)
{
    const std::size_t point = name.rfind(U'.');
    if (point == npos || point == 0 || name.size() - point > longest_extension) return {name, TextView(U"")};
    return {name.substr(0, point), name.substr(point)};
}

std::size_t name_size(TextView name) noexcept
{
    std::size_t size = 0;
    for (std::size_t i = 0; i < name.size(); ++i) size += name_size(name[i]);
    return size;
}

TextView cut_to_room(TextView name, std::size_t room)
{
    std::size_t kept = 0;
    while (kept < name.size() && name_size(name[kept]) <= room) room -= name_size(name[kept++]);
    return name.substr(0, kept);
}

Text safe_name_part(TextView part)
{
    Text name = part.str();
    for (char32_t& character : name)
        if (is_hidden(character) || forbidden.find(character) != std::u32string_view::npos) character = U'_';
    return name;
}

Text safe_file_name(TextView name, std::size_t room)
{
    const Text safe = safe_name_part(name);
    if (safe.empty() || safe == U"." || safe == U"..") return U"_";
    if (name_size(safe) <= room) return usable_name(safe);
    const auto [stem, extension] = split_extension(safe);
    return usable_name(cut_to_room(stem, room - name_size(extension)).str() + extension);
}

} // namespace tarvik
