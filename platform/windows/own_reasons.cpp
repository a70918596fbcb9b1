#include "platform/files/own_reasons.h"

#include <array>
#include <cerrno>

namespace tarvik {

// The first is a number of the system's own, which are above those of <cerrno>; the compiler's headers do not name it.
std::span<const FileReason> own_reasons() noexcept
{
    constexpr int full_quota = 1295;
    static constexpr std::array<FileReason, 2> reasons{
        {{full_quota, U"磁盘配额已用完"}, {ENAMETOOLONG, U"名称太长，连同所在的文件夹不能超过 259 个字符"}}};
    return reasons;
}

} // namespace tarvik
