#pragma once

#include <fcntl.h>
#include <filesystem>
#include <grp.h>
#include <initializer_list>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tarvik::fuzz {

using Folders = std::initializer_list<std::filesystem::path>;

/// Lets the kernel refuse every change outside of the folders. Gives false where it cannot.
inline bool hold_to(Folders folders)
{
    constexpr std::uint64_t changes =
        LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
        LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
        LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK |
        LANDLOCK_ACCESS_FS_MAKE_SYM | LANDLOCK_ACCESS_FS_EXECUTE;
    landlock_ruleset_attr rules{};
    rules.handled_access_fs = changes;
    const auto ruleset = static_cast<int>(::syscall(SYS_landlock_create_ruleset, &rules, sizeof(rules), 0));
    if (ruleset < 0) return false;
    bool held = true;
    for (const auto& folder : folders) {
        const int opened = ::open(folder.c_str(), O_PATH | O_CLOEXEC);
        landlock_path_beneath_attr allowed{};
        allowed.allowed_access = changes & ~std::uint64_t{LANDLOCK_ACCESS_FS_EXECUTE};
        allowed.parent_fd = opened;
        held = held && opened >= 0 &&
               ::syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &allowed, 0) == 0;
        if (opened >= 0) ::close(opened);
    }
    held =
        held && ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::syscall(SYS_landlock_restrict_self, ruleset, 0) == 0;
    ::close(ruleset);
    return held;
}

/// Makes the process that of a user to whom nothing belongs but the folders. Only root can, else it gives false.
inline bool own_only(Folders folders)
{
    constexpr unsigned nobody = 65534;
    for (const auto& folder : folders) {
        if (::chown(folder.c_str(), nobody, nobody) != 0) return false;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            if (::chown(entry.path().c_str(), nobody, nobody) != 0) return false;
    }
    return ::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
           ::setresuid(nobody, nobody, nobody) == 0;
}

/// From now on this process changes files in these folders only, and where everybody may; reading is free. Gives false
/// where the system cannot hold it to that.
inline bool write_only_in(Folders folders)
{
    return hold_to(folders) || own_only(folders);
}

} // namespace tarvik::fuzz
