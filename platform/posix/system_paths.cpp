#include "platform/files/system_paths.h"

#include "platform/files/path_text.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

fs::path home_folder()
{
    if (const char* home = std::getenv("HOME"); home && *home) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user ? user->pw_dir : "/";
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

} // namespace tarvik
