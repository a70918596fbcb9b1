#pragma once

#include <filesystem>
#include <string>

namespace tarvik::test {

/// What a script, named by its path in the sources, prints of a file. Debian's own interpreter runs it, which is the
/// one that has Debian's packages.
std::string read_by_python(const std::string& script, const std::filesystem::path& file);

} // namespace tarvik::test
