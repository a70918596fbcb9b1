#include "playback/player.h"
#include "fuzz/target.h"
#include "tests/support/test_program.h"

#include <fcntl.h>
#include <filesystem>
#include <grp.h>
#include <initializer_list>
#include <linux/landlock.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tarvik::fuzz {
namespace {

namespace fs = std::filesystem;

using Folders = std::initializer_list<std::filesystem::path>;

// Lets the kernel refuse every change outside of the folders. Gives false where it cannot.
bool hold_to(Folders folders)
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

// Makes the process that of a user to whom nothing belongs but the folders. Only root can, else it gives false.
bool own_only(Folders folders)
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

// From now on this process changes files in these folders only, and where everybody may; reading is free. Gives false
// where the system cannot hold it to that.
bool write_only_in(Folders folders)
{
    return hold_to(folders) || own_only(folders);
}

/// Scripts name files anywhere, so nothing is searched where they could be changed.
void confine()
{
    const char* corpus = std::getenv("TARVIK_FUZZ_FOLDER"); // where the search keeps what it finds
    if (!corpus) return;                                    // the seeds are tame
    require(write_only_in({fs::temp_directory_path(), corpus}), "this system confines no process");
}

} // namespace
} // namespace tarvik::fuzz

/// A script over a scratch folder plays to its end or ends with a message.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    static const bool is_confined = (fuzz::confine(), true);
    static_cast<void>(is_confined);
    const test::TemporaryFolder scratch;
    Options options;
    options.installation = scratch.path() / "installation";
    fuzz::fs::copy(TARVIK_SAMPLES, options.installation, fuzz::fs::copy_options::recursive);
    for (char letter = 'a'; letter <= 'z'; ++letter) options.drives[letter] = scratch.path();
    options.clock = {};
    options.print_to = scratch.path();
    options.engine = Engine::Ooxml;
    std::istringstream script{std::string(fuzz::bytes_of_input(data, size))};
    std::ostringstream out, errors;
    const int status = play(options, script, out, errors);
    fuzz::require(status == 0 || !errors.str().empty(), "who fails says why");
    return 0;
}
