#pragma once

#include <filesystem>
#include <string>

/// The stand-in of the installed suite, as the system finds it.
namespace tarvik::test {

inline constexpr const wchar_t* workbooks_class = L"{7A1D0B52-5C1E-4C55-9B0A-6E0C5A9F1E01}";
inline constexpr const wchar_t* documents_class = L"{7A1D0B52-5C1E-4C55-9B0A-6E0C5A9F1E02}";

/// A registration of the suite itself must not be overwritten: nothing is installed outside of wine.
bool may_install_stand_in();
/// Both applications, with the folder of their orders.
void install_stand_in(const std::filesystem::path& folder);
void remove_stand_in();
std::filesystem::path stand_in_program(const wchar_t* name);

/// A file of an older format as the stand-in makes it: a compound file with a stream of this name that holds a package.
/// All that the engine sees of the older formats is the container.
std::string older_with(const std::string& stream, const std::string& package, bool with_macros = false);
/// The package in such a file; the empty text where there is none.
std::string packed_in(const std::string& older);

} // namespace tarvik::test
