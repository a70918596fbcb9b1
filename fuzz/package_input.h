#pragma once

#include "fuzz/target.h"
#include "tests/support/packages.h"

namespace tarvik::fuzz {

/// An input is a package, or a listing of the parts of one, so that what is changed by chance can stand in the XML. A
/// part of the name "picture" goes to `picture`.
inline std::string package_of(std::string_view input, std::string* picture = nullptr)
{
    if (!input.starts_with("=== ")) return std::string(input);
    test::Parts parts = listed_files(input);
    for (auto& [name, contents] : parts)
        if (picture && name == "picture") *picture = contents;
    std::erase_if(parts, [](const auto& part) {
        const bool is_utf8 = to_utf8(from_utf8(part.first)) == part.first;
        return part.first == "picture" || !is_utf8 || part.first.size() > 60'000;
    });
    return parts.empty() ? std::string() : test::make_package(parts, false);
}

} // namespace tarvik::fuzz
