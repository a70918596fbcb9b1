#include "platform/files/paths.h"

#include "platform/text/utf8.h"

#include <cstdlib>
#include <dirent.h>
#include <memory>
#include <optional>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

fs::path home_folder()
{
    if (const char* home = std::getenv("HOME"); home && *home) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user ? user->pw_dir : "/";
}

// A run looks thousands of names up: paths are put together as the system's texts, not taken apart at every step.

bool is_there(const std::string& path) noexcept
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

std::string joined(std::string folder, std::string_view name)
{
    if (!folder.empty() && folder.back() != '/') folder += '/';
    folder += name;
    return folder;
}

bool same_without_case(std::string_view name, TextView upper_cased) noexcept
{
    const auto* at = reinterpret_cast<const std::uint8_t*>(name.data());
    const auto* end = at + name.size();
    for (std::size_t i = 0; i < upper_cased.size(); ++i) {
        if (at == end) return false;
        const Utf8Step step = utf8_step(at, end);
        if (upper(step.character) != upper_cased[i]) return false;
        at += step.size;
    }
    return at == end;
}

std::optional<std::string> without_case(const std::string& folder, TextView name)
{
    const Text wanted = upper(name);
    std::optional<std::string> found;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), ::closedir);
    while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr) {
        const std::string_view candidate = static_cast<const char*>(entry->d_name);
        if (!same_without_case(candidate, wanted) || candidate == "." || candidate == "..") continue;
        if (!found || candidate < *found) found = candidate;
    }
    return found;
}

} // namespace

fs::path drive_folder(char /*letter*/)
{
    return home_folder();
}

fs::path rooted_path(TextView path)
{
    // The system's own names may hold what else would be a separator.
    fs::path own = path_of(path);
    std::error_code error;
    return own.is_absolute() && fs::exists(own, error) ? own : look_up("/", path);
}

fs::path full_path(const fs::path& path)
{
    return fs::absolute(path).lexically_normal();
}

fs::path program_file()
{
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

// A relative path in the variable is to be taken for none.
fs::path user_data_folder()
{
    const char* value = std::getenv("XDG_DATA_HOME");
    const fs::path data = value ? value : "";
    return data.is_absolute() ? data : home_folder() / ".local/share";
}

bool may_write_in(const fs::path& folder) noexcept
{
    return ::access(folder.c_str(), W_OK) == 0;
}

fs::path look_up(const fs::path& root, TextView names)
{
    std::string path = root.native();
    bool all_there = true; // so far
    for (const Text& name : names_of(names)) {
        std::string next = joined(path, to_utf8(name));
        if (all_there && !is_there(next)) {
            const auto found = without_case(path, name);
            all_there = found.has_value();
            if (found) next = joined(path, *found);
        }
        path = std::move(next);
    }
    return path;
}

Text text_of(const fs::path& path)
{
    return from_utf8(path.native());
}

fs::path path_of(TextView text)
{
    return {to_utf8(text)};
}

std::string utf8_of(const fs::path& path)
{
    return path.native();
}

fs::path path_of_utf8(std::string_view utf8)
{
    return {utf8};
}

const std::size_t longest_name = 255;

// In bytes of UTF-8.
std::size_t name_size(char32_t character) noexcept
{
    return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

bool is_usable_name(TextView /*name*/)
{
    return true;
}

Text usable_name(Text name)
{
    return name;
}

} // namespace tarvik
