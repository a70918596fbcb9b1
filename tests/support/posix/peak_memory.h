#pragma once

#include <algorithm>
#include <fstream>
#include <string>

namespace tarvik::test {

/// How many bytes more than at the start of the measuring the process has held at any moment.
class PeakMemory {
public:
    PeakMemory()
    {
        std::ofstream("/proc/self/clear_refs") << 5; // the highest mark is forgotten
        start_ = bytes("VmRSS:");
    }
    std::size_t taken() const { return std::max(bytes("VmHWM:"), start_) - start_; }

private:
    static std::size_t bytes(const std::string& wanted)
    {
        std::ifstream status("/proc/self/status");
        std::size_t kilobytes = 0;
        for (std::string word; status >> word;)
            if (word == wanted) status >> kilobytes;
        return kilobytes << 10U;
    }

    std::size_t start_ = 0;
};

} // namespace tarvik::test
