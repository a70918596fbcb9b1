#include "platform/failure.h"

#include <cerrno>

namespace tarvik {

namespace {

constexpr FileReason reasons[] = {
    {ENOENT, U"找不到这个文件或文件夹"},
    {EACCES, U"没有权限"},
    {EPERM, U"没有权限"},
    {EROFS, U"磁盘是只读的"},
    {ENOSPC, U"磁盘已满"},
    {EFBIG, U"文件太大"},
    {EISDIR, U"这是一个文件夹，不是文件"},
    {ENOTDIR, U"路径中有一段不是文件夹"},
    {EEXIST, U"已有同名的文件"},
    {EINVAL, U"名称或文件类型不能用"},
    {ENAMETOOLONG, U"名称太长"},
    {ELOOP, U"链接绕成了圈"},
    {EBUSY, U"文件正被别的程序使用"},
    {EMFILE, U"打开的文件太多"},
    {ENFILE, U"打开的文件太多"},
    {ENOMEM, U"内存不足"},
    {EIO, U"磁盘读写出错"},
    {ENODEV, U"设备不存在"},
    {ENXIO, U"设备不存在"},
};

Text reason_of_number(int error)
{
    for (const auto& rows : {own_reasons(), std::span<const FileReason>(reasons)})
        for (const FileReason& reason : rows)
            if (reason.error == error) return Text(reason.words);
    return U"系统错误 " + number_text(error);
}

} // namespace

Text reason_of(const std::system_error& error)
{
    return reason_of_number(error.code().default_error_condition().value());
}

Failure file_failure(TextView action, TextView path, int error)
{
    return Failure(U"无法" + action + U"“" + path + U"”：" + reason_of_number(error) + U"。");
}

} // namespace tarvik
