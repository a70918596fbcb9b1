#pragma once

#include <filesystem>

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

} // namespace tarvik::test
