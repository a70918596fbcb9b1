#include "platform/files/file_name.h"

#include "platform/files/own_names.h"

namespace tarvik {

namespace {

constexpr std::u32string_view forbidden = U"\\/:*?\"<>|";
constexpr std::size_t longest_extension = 8;

std::size_t utf8_size(char32_t character) noexcept
{
    return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

std::size_t utf8_size(TextView text)
{
    return to_utf8(text).size();
}

Text shortened(const Text& name)
{
    const std::size_t point = TextView(name).rfind(U'.');
    const bool has_extension = point != npos && point > 0 && name.size() - point <= longest_extension;
    const Text extension = has_extension ? name.substr(point) : Text();
    const std::u32string_view stem = std::u32string_view(name).substr(0, name.size() - extension.size());
    const TextView kept = cut_to_bytes(stem, longest_name - utf8_size(extension));
    return kept.str() + extension;
}

} // namespace

PathParts split_path(TextView path)
{
    std::size_t start = path.size();
    while (start > 0 && path[start - 1] != U'\\' && path[start - 1] != U'/') --start;
    return {path.substr(0, start), path.substr(start)};
}

TextView cut_to_bytes(TextView name, std::size_t room)
{
    std::size_t kept = 0;
    while (kept < name.size() && utf8_size(name[kept]) <= room) room -= utf8_size(name[kept++]);
    return name.substr(0, kept);
}

Text safe_name_part(TextView part)
{
    Text name = part.str();
    for (char32_t& character : name)
        if (character < U' ' || forbidden.find(character) != std::u32string_view::npos) character = U'_';
    return name;
}

Text safe_file_name(TextView name)
{
    const Text safe = safe_name_part(name);
    if (safe.empty() || safe == U"." || safe == U"..") return U"_";
    return usable_name(utf8_size(safe) > longest_name ? shortened(safe) : safe);
}

} // namespace tarvik
