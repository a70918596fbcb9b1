#pragma once

#include <filesystem>
#include <string>

/// Where the tests find what they read, and a reader that is not ours.
namespace tarvik::test {

/// The folder of the sources.
std::string source_folder();
/// The folder that was built, with the programs and what lies beside them.
std::string built_installation();

/// What a script, named by its path in the sources, prints of a file. Debian's own interpreter runs it, which is the
/// one that has Debian's packages.
std::string read_by_python(const std::string& script, const std::filesystem::path& file);

} // namespace tarvik::test
