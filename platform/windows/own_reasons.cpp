#include "platform/files/own_reasons.h"

#include "platform/windows/error_numbers.h"

#include <array>
#include <cerrno>

namespace tarvik {

std::span<const FileReason> own_reasons() noexcept
{
    static constexpr std::array<FileReason, 2> reasons{
        {{full_quota, U"磁盘配额已用完"}, {ENAMETOOLONG, U"名称太长，连同所在的文件夹不能超过 259 个字符"}}};
    return reasons;
}

} // namespace tarvik
