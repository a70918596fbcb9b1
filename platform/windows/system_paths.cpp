#include "platform/system_paths.h"

#include "platform/path_lookup.h"
#include "platform/path_text.h"

#include <string>
#include <windows.h>

namespace tarvik {

namespace fs = std::filesystem;

fs::path drive_folder(char letter)
{
    return std::wstring{static_cast<wchar_t>(letter), L':', L'\\'};
}

fs::path rooted_path(TextView path)
{
    const bool of_another_computer = path.size() > 2 && is_separator(path[1]) && !is_separator(path[2]);
    return of_another_computer ? look_up(L"\\\\", path) : look_up(full_path(L"\\"), path);
}

// The standard library takes \\server\share for a folder of the drive.
fs::path full_path(const fs::path& path)
{
    std::wstring full(MAX_PATH, L'\0');
    for (;;) {
        const auto room = static_cast<DWORD>(full.size());
        const DWORD size = ::GetFullPathNameW(path.c_str(), room, full.data(), nullptr);
        const bool fits = size < room;
        full.resize(size);
        if (fits) return size == 0 ? path : fs::path(full);
    }
}

fs::path program_file()
{
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size = ::GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
        const bool fits = size < file.size();
        file.resize(fits ? size : file.size() * 2);
        if (fits) return file;
    }
}

} // namespace tarvik
