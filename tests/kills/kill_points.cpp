// Loaded into a program ahead of its libraries: counts the moments right before and right after every flush and every
// rename, and kills the program at the one that is asked for.
//     TARVIK_KILL_AT=N      SIGKILL at the moment number N, counting from 1
//     TARVIK_KILL_LOG=DIR   keeps what every rename puts in place: DIR/N holds the bytes, the line N of DIR/targets the
//                           path; DIR/moments holds the number of moments so far

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class Moments {
public:
    void pass()
    {
        const std::lock_guard lock(mutex_);
        if (++passed_ == kill_at_) ::kill(::getpid(), SIGKILL);
        if (log_) std::ofstream(fs::path(log_) / "moments") << passed_;
    }

    void keep(const char* file, const char* target)
    {
        if (!log_) return;
        const std::lock_guard lock(mutex_);
        fs::copy_file(file, fs::path(log_) / std::to_string(++kept_));
        std::ofstream(fs::path(log_) / "targets", std::ios::app) << fs::absolute(target).native() << '\n';
    }

private:
    static long number(const char* name)
    {
        const char* value = std::getenv(name);
        return value ? std::strtol(value, nullptr, 10) : 0;
    }

    std::mutex mutex_;
    const long kill_at_ = number("TARVIK_KILL_AT");
    const char* const log_ = std::getenv("TARVIK_KILL_LOG");
    long passed_ = 0;
    long kept_ = 0;
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
    moments().pass();
    return result;
}

} // namespace

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
    moments().keep(from, to);
    moments().pass();
    const int result = next<int (*)(const char*, const char*)>("rename")(from, to);
    moments().pass();
    return result;
}
