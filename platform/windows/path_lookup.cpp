#include "platform/files/path_lookup.h"

#include "platform/files/path_text.h"

namespace tarvik {

std::filesystem::path look_up(const std::filesystem::path& root, TextView names)
{
    std::filesystem::path path = root;
    for (const Text& name : names_of(names)) path /= path_of(name);
    return path.make_preferred();
}

} // namespace tarvik
