#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/damage.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <dlfcn.h>
#include <initializer_list>
#include <random>
#include <spawn.h>
#include <string_view>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

/// LibreOffice as this system has it: its plugin and its processes.
namespace tarvik::libreoffice {

namespace fs = std::filesystem;

namespace {

constexpr std::u32string_view not_found = U"没有找到 LibreOffice；请安装 libreoffice-calc 和 libreoffice-writer。";

// The office waits for a word before it starts, so that its guardian stands before it does. The first start on a new
// profile ends with status 81 once the profile is made, and asks to be repeated.
constexpr const char* office_script = "read -r go || exit 1; exec </dev/null >/dev/null 2>&1; profile=$1;"
                                      "export SAL_USE_VCLPLUGIN=svp TMPDIR=\"$2\"; shift 2;"
                                      "[ -e \"$profile\" ] || \"$@\" || [ $? = 81 ] || exit 1; exec \"$@\"";
// LibreOffice's pipes are not where its other files are. It leaves behind the one that it is driven by, and one by
// which it would find another on the same profile: that is named by the MD5 of the profile's UTF-16, without the
// leading zeros of its bytes.
constexpr const char* guardian_script =
    "read -r stay || { kill -s KILL -- \"-$1\"; rm -rf -- \"$2\"; };"
    "id=$(printf %s \"$4\" | sed 's/./&\\n/g' | tr '\\n' '\\0' | md5sum | cut -c 1-32 |"
    " sed 's/../& /g; s/0\\(.\\) /\\1/g; s/ //g');"
    "rm -f -- \"$3$5\" \"$3SingleOfficeIPC_$id\"";

void require(int error)
{
    if (error != 0) throw std::system_error(error, std::generic_category());
}

/// Two ends of a line; no other child inherits them.
struct Line {
    Line()
    {
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) require(errno);
    }
    ~Line()
    {
        for (const int end : ends)
            if (end != -1) ::close(end);
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    int child_end() const { return ends[0]; }
    int take_own_end() { return std::exchange(ends[1], -1); }

    std::array<int, 2> ends{-1, -1};
};

void say_and_close(int line) noexcept
{
    ::send(line, "\n", 1, MSG_NOSIGNAL);
    ::close(line);
}

/// Every byte that is none of a plain name is written %XX.
std::string file_url(const std::string& path)
{
    constexpr std::string_view digits = "0123456789ABCDEF", plain = "/-_.~";
    std::string url = "file://";
    for (const char letter : path) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte < 0x80 && (std::isalnum(byte) || plain.find(letter) != std::string_view::npos)) url += letter;
        else url.append({'%', digits[byte >> 4U], digits[byte & 15U]});
    }
    return url;
}

std::vector<char*> pointers(std::vector<std::string>& words)
{
    std::vector<char*> made;
    made.reserve(words.size() + 1);
    for (auto& word : words) made.push_back(word.data());
    made.push_back(nullptr);
    return made;
}

/// A shell with a script, in a process group of its own, that reads from `input` and holds nothing else of this
/// program.
pid_t start_shell(int input, std::vector<std::string> words)
{
    words.insert(words.begin(), {"sh", "-c"});
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_adddup2(&actions, input, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    sigset_t none, usual;
    sigemptyset(&none);
    sigemptyset(&usual);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGCHLD}) sigaddset(&usual, number);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &usual);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    pid_t child = -1;
    const int error = ::posix_spawn(&child, "/bin/sh", &actions, &attributes, pointers(words).data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    require(error);
    return child;
}

void wait_for(pid_t child) noexcept
{
    while (::waitpid(child, nullptr, 0) == -1 && errno == EINTR) {
    }
}

std::string new_pipe_name()
{
    std::random_device random;
    return "tarvik-" + std::to_string(::getpid()) + "-" + std::to_string(random());
}

} // namespace

OfficeProcess::OfficeProcess(const fs::path& programs, const fs::path& folder)
    : temporary_(folder / "temporary"), pipe_(new_pipe_name())
{
    fs::create_directory(temporary_);
    const auto profile = file_url(folder / "profile");
    Line go, end;
    office_ = start_shell(go.child_end(),
                          {office_script, "tarvik-office", folder / "profile/user/registrymodifications.xcu",
                           temporary_, programs / "soffice.bin", "--headless", "--invisible", "--norestore", "--nologo",
                           "--nodefault", "-env:UserInstallation=" + profile, "--accept=pipe,name=" + pipe_ + ";urp;"});
    try {
        guardian_ = start_shell(end.child_end(), {guardian_script, "tarvik-guardian", std::to_string(office_), folder,
                                                  "/tmp/OSL_PIPE_" + std::to_string(::getuid()) + '_', profile, pipe_});
    } catch (...) {
        kill();
        wait_for(office_);
        throw;
    }
    guardian_line_ = end.take_own_end();
    say_and_close(go.take_own_end());
}

OfficeProcess::~OfficeProcess()
{
    if (!has_ended_) {
        kill();
        wait_for(office_);
    }
    say_and_close(guardian_line_);
    wait_for(guardian_);
    std::error_code ignored;
    fs::remove_all(temporary_, ignored);
}

bool OfficeProcess::has_ended()
{
    if (!has_ended_) {
        const pid_t ended = ::waitpid(office_, nullptr, WNOHANG);
        if (ended == office_ || (ended == -1 && errno == ECHILD)) {
            kill(); // what it may have left behind
            has_ended_ = true;
        }
    }
    return has_ended_;
}

void OfficeProcess::kill() const noexcept
{
    ::kill(-office_, SIGKILL);
}

// The library is never closed: LibreOffice's own libraries keep objects until the program ends.
Plugin& load_plugin(const fs::path& file)
{
    std::error_code error;
    if (!fs::exists(file, error))
        throw ooxml::Damage(U"需要 LibreOffice，而程序缺少驱动它的插件 " + from_utf8(utf8_of(file.filename())) +
                            U"；请安装 tarvik-libreoffice；自行编译的程序，请安装 libreoffice-dev 后重新编译。");
    void* const library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) throw ooxml::Damage(Text(not_found));
    const auto make = reinterpret_cast<PluginFunction*>(::dlsym(library, plugin_function));
    if (!make) throw ooxml::Damage(U"插件 " + from_utf8(utf8_of(file.filename())) + U" 与程序不相配。");
    Plugin& plugin = *make();
    if (!fs::exists(plugin.program_folder() / "soffice.bin", error)) throw ooxml::Damage(Text(not_found));
    return plugin;
}

Text suite_title()
{
    return U"LibreOffice";
}

fs::path usual_plugin_file()
{
    std::error_code error;
    const fs::path folder = program_file().parent_path();
    const fs::path packaged = folder.parent_path() / "lib/tarvik" / plugin_file;
    return folder.filename() == "bin" && fs::exists(packaged, error) ? packaged : folder / plugin_file;
}

} // namespace tarvik::libreoffice

namespace tarvik {

bool suite_edits() noexcept
{
    return true;
}

} // namespace tarvik
