#pragma once

#include <filesystem>
#include <map>
#include <string>

/// Where the tests find what they read, a reader that is not ours, and the program as it is installed.
namespace tarvik::test {

/// The folder of the sources.
std::string source_folder();
/// The folder that was built, with the programs and what lies beside them.
std::string built_installation();

/// The files below a folder by their paths in it, with what they hold.
std::map<std::string, std::string> files_below(const std::filesystem::path& folder);
/// The text with all of its parts that are `old` replaced.
std::string replaced(std::string text, const std::string& old, const std::string& by);

struct Played {
    std::string out, errors;
    int status; ///< as std::system() gives it
};
/// Plays a script in the real program, over the folders "installation" and "d" of `root`.
Played play_script(const std::filesystem::path& script, const std::filesystem::path& root,
                   const std::string& options = {});

/// What a script, named by its path in the sources, prints of a file. Debian's own interpreter runs it, which is the
/// one that has Debian's packages.
std::string read_by_python(const std::string& script, const std::filesystem::path& file);

} // namespace tarvik::test
