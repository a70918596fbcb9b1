#pragma once

#include <csignal>
#include <sys/resource.h>

namespace tarvik::test {

/// No file of this process grows above the limit while this lives: a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t limit)
    {
        old_signal_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit full{limit, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, old_signal_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit old_{};
    void (*old_signal_)(int);
};

} // namespace tarvik::test
