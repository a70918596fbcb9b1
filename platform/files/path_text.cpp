#include "platform/files/path_text.h"

namespace tarvik {

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

} // namespace tarvik
