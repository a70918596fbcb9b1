#include "platform/files/own_reasons.h"

#include <array>

namespace tarvik {

// A number of the system's own, which are above those of <cerrno>; the compiler's headers do not name it.
std::span<const FileReason> own_reasons() noexcept
{
    constexpr int full_quota = 1295;
    static constexpr std::array<FileReason, 1> reasons{{{full_quota, U"磁盘配额已用完"}}};
    return reasons;
}

} // namespace tarvik
