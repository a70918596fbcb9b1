// Loaded into a program ahead of its libraries: counts the moments right before and right after every flush and every
// change of a name, kills the program at the one that is asked for, and ends it at once where an order is broken that a
// loss of power would punish: what was written is flushed before it gets its name, and the folder of the latest new
// name is flushed before an old name goes.
//     TARVIK_KILL_AT=N      SIGKILL at the moment number N, counting from 1
//     TARVIK_KILL_LOG=DIR   keeps what every new name stands for: DIR/N holds the bytes, the line N of DIR/targets the
//                           path; DIR/moments holds the number of moments so far
//     TARVIK_KILL_APART=1   every folder is a file system of its own

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

struct stat status_of(int descriptor)
{
    struct stat status {};
    ::fstat(descriptor, &status);
    return status;
}

[[noreturn]] void break_off(const char* name, const char* reason)
{
    std::fprintf(stderr, "%s: %s\n", name, reason);
    std::_Exit(99);
}

class Moments {
public:
    void pass()
    {
        const std::lock_guard lock(mutex_);
        if (++passed_ == kill_at_) ::kill(::getpid(), SIGKILL);
        if (log_) std::ofstream(fs::path(log_) / "moments") << passed_;
    }

    void wrote(int descriptor)
    {
        const struct stat status = status_of(descriptor);
        if (!S_ISREG(status.st_mode)) return;
        const std::lock_guard lock(mutex_);
        unflushed_.insert(status.st_ino);
    }

    void flushed(int descriptor)
    {
        const struct stat status = status_of(descriptor);
        const std::lock_guard lock(mutex_);
        unflushed_.erase(status.st_ino);
        if (S_ISDIR(status.st_mode)) is_folder_flushed_ = true;
    }

    /// Whether the file may get the name; else errno is set.
    bool is_near(const char* file, const char* name) const
    {
        if (!apart_ || fs::path(file).parent_path() == fs::path(name).parent_path()) return true;
        errno = EXDEV;
        return false;
    }

    void before_name(const char* file, const char* name)
    {
        const std::lock_guard lock(mutex_);
        struct stat status {};
        if (::stat(file, &status) == 0 && unflushed_.contains(status.st_ino))
            break_off(name, "named before it is flushed");
        if (!log_) return;
        fs::copy_file(file, fs::path(log_) / std::to_string(++kept_));
        std::ofstream(fs::path(log_) / "targets", std::ios::app) << fs::absolute(name).native() << '\n';
    }

    void named()
    {
        const std::lock_guard lock(mutex_);
        is_folder_flushed_ = false;
    }

    void before_removal(const char* name)
    {
        const std::lock_guard lock(mutex_);
        const bool is_unfinished = fs::path(name).filename().native().starts_with(".tarvik-");
        if (!is_unfinished && !is_folder_flushed_)
            break_off(name, "removed before the folder of the new name is flushed");
    }

private:
    static long number(const char* name)
    {
        const char* value = std::getenv(name);
        return value ? std::strtol(value, nullptr, 10) : 0;
    }

    std::recursive_mutex mutex_; // the log is written by calls that are watched too
    const long kill_at_ = number("TARVIK_KILL_AT");
    const bool apart_ = number("TARVIK_KILL_APART") != 0;
    const char* const log_ = std::getenv("TARVIK_KILL_LOG");
    long passed_ = 0;
    long kept_ = 0;
    std::set<ino_t> unflushed_;
    bool is_folder_flushed_ = false; // since the latest new name
};

Moments& moments()
{
    static Moments instance;
    return instance;
}

template <typename Call>
Call next(const char* name)
{
    return reinterpret_cast<Call>(::dlsym(RTLD_NEXT, name));
}

int flush(const char* name, int descriptor)
{
    moments().pass();
    const int result = next<int (*)(int)>(name)(descriptor);
    if (result == 0) moments().flushed(descriptor);
    moments().pass();
    return result;
}

template <typename Call>
int give_name(const char* file, const char* name, const Call& call)
{
    if (!moments().is_near(file, name)) return -1;
    moments().before_name(file, name);
    moments().pass();
    const int result = call();
    const int error = errno;
    if (result == 0) moments().named();
    moments().pass();
    errno = error;
    return result;
}

} // namespace

extern "C" ssize_t write(int descriptor, const void* bytes, size_t size)
{
    moments().wrote(descriptor);
    return next<ssize_t (*)(int, const void*, size_t)>("write")(descriptor, bytes, size);
}

extern "C" int fdatasync(int descriptor)
{
    return flush("fdatasync", descriptor);
}

extern "C" int fsync(int descriptor)
{
    return flush("fsync", descriptor);
}

extern "C" int rename(const char* from, const char* to) noexcept
{
    return give_name(from, to, [&] { return next<int (*)(const char*, const char*)>("rename")(from, to); });
}

extern "C" int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) noexcept
{
    using Call = int (*)(int, const char*, int, const char*, unsigned);
    return give_name(from, to, [&] { return next<Call>("renameat2")(from_folder, from, to_folder, to, flags); });
}

extern "C" int link(const char* file, const char* name) noexcept
{
    return give_name(file, name, [&] { return next<int (*)(const char*, const char*)>("link")(file, name); });
}

extern "C" int unlink(const char* name) noexcept
{
    moments().before_removal(name);
    moments().pass();
    const int result = next<int (*)(const char*)>("unlink")(name);
    moments().pass();
    return result;
}
