#include "platform/files/own_reasons.h"

#include <array>
#include <cerrno>

namespace tarvik {

std::span<const FileReason> own_reasons() noexcept
{
    static constexpr std::array<FileReason, 2> reasons{
        {{EDQUOT, U"磁盘配额已用完"}, {ETXTBSY, U"文件正被别的程序使用"}}};
    return reasons;
}

} // namespace tarvik
