#include "platform/path_lookup.h"

#include "platform/path_text.h"

namespace tarvik {

std::filesystem::path look_up(std::filesystem::path root, TextView names)
{
    for (const Text& name : names_of(names)) root /= path_of(name);
    return root.make_preferred();
}

} // namespace tarvik
