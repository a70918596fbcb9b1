#include "platform/files/system_paths.h"

#include "platform/files/path_text.h"

#include <string>
#include <windows.h>

#include <shlobj.h> // needs the one above

namespace tarvik {

namespace fs = std::filesystem;

fs::path drive_folder(char letter)
{
    const auto small = static_cast<wchar_t>(letter);
    return std::wstring{small >= L'a' && small <= L'z' ? static_cast<wchar_t>(small - L'a' + L'A') : small, L':',
                        L'\\'};
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

fs::path user_data_folder()
{
    std::wstring folder(MAX_PATH, L'\0');
    if (::SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                           folder.data()) != S_OK)
        return program_file().parent_path();
    folder.resize(folder.find(L'\0'));
    return folder;
}

// What the rights of a folder come to is known when a file was made in it.
bool may_write_in(const fs::path& folder) noexcept
{
    try {
        const fs::path trial = folder / (L".tarvik-" + std::to_wstring(::GetCurrentProcessId()) + L".tmp");
        const HANDLE file = ::CreateFileW(trial.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                          FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        if (file == INVALID_HANDLE_VALUE) return false;
        ::CloseHandle(file);
        return true;
    } catch (const std::exception&) { // no memory
        return false;
    }
}

fs::path look_up(const fs::path& root, TextView names)
{
    fs::path path = root;
    for (const Text& name : names_of(names)) path /= path_of(name);
    return path.make_preferred();
}

} // namespace tarvik
