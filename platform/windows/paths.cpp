#include "platform/files/paths.h"

#include "platform/text/utf8.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <windows.h>

#include <shlobj.h> // needs the one above

namespace tarvik {

namespace fs = std::filesystem;

namespace {

constexpr std::u32string_view devices[] = {U"con",  U"prn",  U"aux",  U"nul",  U"com1", U"com2", U"com3", U"com4",
                                           U"com5", U"com6", U"com7", U"com8", U"com9", U"lpt1", U"lpt2", U"lpt3",
                                           U"lpt4", U"lpt5", U"lpt6", U"lpt7", U"lpt8", U"lpt9"};

/// Whatever its extension.
bool is_device(TextView name)
{
    Text stem = lower(name.substr(0, name.find(U'.')));
    while (!stem.empty() && stem.back() == U' ') stem.pop_back();
    return std::ranges::find(devices, stem) != std::end(devices);
}

/// The system drops a point or a blank there and opens another file.
bool has_lost_end(TextView name)
{
    if (name.empty() || name == U"." || name == U"..") return false;
    const char32_t last = name[name.size() - 1];
    return last == U'.' || last == U' ';
}

} // namespace

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

// A file lies in a folder that has such a name as well, and Excel opens no path of more than 218 units. So many take
// 255 bytes at most where a share lies on another system.
const std::size_t longest_name = 85;

std::size_t name_size(char32_t character) noexcept
{
    return character < 0x10000 ? 1 : 2;
}

bool is_usable_name(TextView name)
{
    return !is_device(name) && !has_lost_end(name);
}

Text usable_name(Text name)
{
    if (has_lost_end(name)) name.back() = U'_';
    return is_device(name) ? U"_" + name : name;
}

// A name may hold lone surrogates: they show as U+FFFD.
Text text_of(const fs::path& path)
{
    const std::wstring& units = path.native();
    Text text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        const char32_t unit = units[i];
        const char32_t next = i + 1 < units.size() ? units[i + 1] : U'\0';
        if (!is_surrogate(unit)) {
            text += unit;
        } else if (is_high_surrogate(unit) && is_low_surrogate(next)) {
            text += joined(unit, next);
            ++i;
        } else {
            text += replacement_character;
        }
    }
    return text;
}

fs::path path_of(TextView text)
{
    Text valid = text.str();
    for (char32_t& character : valid)
        if (is_surrogate(character) || character > last_character) character = replacement_character;
    return {valid};
}

std::string utf8_of(const fs::path& path)
{
    return to_utf8(text_of(path));
}

fs::path path_of_utf8(std::string_view utf8)
{
    return path_of(from_utf8(utf8));
}

} // namespace tarvik
