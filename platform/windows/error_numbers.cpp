#include "platform/windows/error_numbers.h"

#include "platform/files/file_failure.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>

namespace tarvik {

namespace {

struct ErrorRow {
    DWORD system;
    int error;
};
constexpr ErrorRow error_rows[] = {
    {ERROR_FILE_NOT_FOUND, ENOENT},
    {ERROR_PATH_NOT_FOUND, ENOENT},
    {ERROR_BAD_NETPATH, ENOENT},
    {ERROR_BAD_NET_NAME, ENOENT},
    {ERROR_ACCESS_DENIED, EACCES},
    {ERROR_SHARING_VIOLATION, EBUSY},
    {ERROR_LOCK_VIOLATION, EBUSY},
    {ERROR_USER_MAPPED_FILE, EBUSY},
    {ERROR_DELETE_PENDING, EBUSY},
    {ERROR_WRITE_PROTECT, EROFS},
    {ERROR_DISK_FULL, ENOSPC},
    {ERROR_HANDLE_DISK_FULL, ENOSPC},
    {full_quota, full_quota},
    {ERROR_FILE_EXISTS, EEXIST},
    {ERROR_ALREADY_EXISTS, EEXIST},
    {ERROR_INVALID_NAME, EINVAL},
    {ERROR_DIRECTORY, ENOTDIR},
    {ERROR_FILENAME_EXCED_RANGE, ENAMETOOLONG},
    {ERROR_BUFFER_OVERFLOW, ENAMETOOLONG},
    {ERROR_NOT_SAME_DEVICE, EXDEV},
    {ERROR_TOO_MANY_OPEN_FILES, EMFILE},
    {ERROR_NOT_ENOUGH_MEMORY, ENOMEM},
    {ERROR_OUTOFMEMORY, ENOMEM},
    {ERROR_INVALID_DRIVE, ENODEV},
    {ERROR_NOT_READY, ENODEV},
    {ERROR_FILE_TOO_LARGE, EFBIG},
};

} // namespace

int number_of(DWORD system) noexcept
{
    const auto* row = std::ranges::find(error_rows, system, &ErrorRow::system);
    return row != std::end(error_rows) ? row->error : EIO;
}

std::span<const FileReason> own_reasons() noexcept
{
    static constexpr std::array<FileReason, 2> reasons{
        {{full_quota, U"磁盘配额已用完"}, {ENAMETOOLONG, U"名称太长，连同所在的文件夹不能超过 259 个字符"}}};
    return reasons;
}

} // namespace tarvik
