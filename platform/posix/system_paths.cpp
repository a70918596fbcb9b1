#include "platform/system_paths.h"

#include "platform/path_lookup.h"
#include "platform/path_text.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace tarvik {

namespace fs = std::filesystem;

fs::path drive_folder(char /*letter*/)
{
    if (const char* home = std::getenv("HOME"); home && *home) return home;
    const passwd* user = ::getpwuid(::getuid());
    return user ? user->pw_dir : "/";
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

} // namespace tarvik
