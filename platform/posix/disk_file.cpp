#include "platform/files/disk_file.h"

#include "platform/failure.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(int error = errno)
{
    throw std::system_error(error, std::generic_category());
}

template <typename Call>
auto unless_interrupted(const Call& call) noexcept
{
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

int flags_of(Opening opening) noexcept
{
    switch (opening) {
    case Opening::Read: return O_RDONLY | O_NONBLOCK;
    case Opening::Leftover: return O_RDONLY | O_NONBLOCK | O_NOFOLLOW;
    case Opening::Append: return O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK;
    case Opening::Scratch: return O_WRONLY | O_CREAT | O_NONBLOCK;
    default: return O_WRONLY | O_CREAT | O_EXCL;
    }
}

int open_descriptor(const fs::path& path, int flags)
{
    const int descriptor = unless_interrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, 0666); });
    if (descriptor == -1) fail();
    return descriptor;
}

int descriptor_of(std::intptr_t handle) noexcept
{
    return static_cast<int>(handle);
}

struct stat system_status(const fs::path& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) fail();
    return status;
}

std::int64_t nanoseconds(const timespec& time) noexcept
{
    constexpr std::int64_t second = 1'000'000'000;
    return time.tv_sec * second + time.tv_nsec;
}

FileStatus file_status(const struct stat& status) noexcept
{
    return {.is_plain = S_ISREG(status.st_mode),
            .is_folder = S_ISDIR(status.st_mode),
            .size = static_cast<std::uint64_t>(status.st_size),
            .changed = nanoseconds(status.st_mtim),
            .status_changed = nanoseconds(status.st_ctim),
            .identity = status.st_ino};
}

// There are file systems that have nothing to flush in a folder.
void flush_folder(const fs::path& path)
{
    const int folder = open_descriptor(path, O_RDONLY | O_DIRECTORY);
    const int error = ::fsync(folder) != 0 ? errno : 0;
    ::close(folder);
    if (error != 0 && error != EINVAL) fail(error);
}

} // namespace

SystemFile::SystemFile(const fs::path& path, Opening opening) : handle_(open_descriptor(path, flags_of(opening)))
{
    if (opening == Opening::New) lock();
}

FileStatus SystemFile::status() const
{
    struct stat status {};
    if (::fstat(descriptor_of(handle_), &status) != 0) fail();
    return file_status(status);
}

std::size_t SystemFile::read(std::span<char> target)
{
    const auto got = unless_interrupted([&] { return ::read(descriptor_of(handle_), target.data(), target.size()); });
    if (got < 0) fail();
    return static_cast<std::size_t>(got);
}

int SystemFile::write(std::string_view bytes) noexcept
{
    while (!bytes.empty()) {
        const auto written =
            unless_interrupted([&] { return ::write(descriptor_of(handle_), bytes.data(), bytes.size()); });
        if (written < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

int SystemFile::cut_behind_last_write() noexcept
{
    const int descriptor = descriptor_of(handle_);
    const auto end = ::lseek(descriptor, 0, SEEK_CUR);
    struct stat status {};
    if (end < 0 || ::fstat(descriptor, &status) != 0) return errno;
    // Cutting costs a turn of the file system also where there is nothing to cut.
    return status.st_size > end ? cut_to(static_cast<std::uint64_t>(end)) : 0;
}

int SystemFile::cut_to(std::uint64_t size) noexcept
{
    return ::ftruncate(descriptor_of(handle_), static_cast<off_t>(size)) == 0 ? 0 : errno;
}

void SystemFile::flush()
{
    if (::fdatasync(descriptor_of(handle_)) != 0) fail();
}

bool SystemFile::lock() noexcept
{
    return ::flock(descriptor_of(handle_), LOCK_EX | LOCK_NB) == 0;
}

// Another clerk may have the file by its group alone. Who may not give it away keeps at least that.
void SystemFile::take_permissions_of(const fs::path& other)
{
    const struct stat status = system_status(other);
    const int descriptor = descriptor_of(handle_);
    if (::fchown(descriptor, status.st_uid, status.st_gid) != 0 && ::fchown(descriptor, uid_t(-1), status.st_gid) != 0)
        errno = 0;
    if (::fchmod(descriptor, status.st_mode & 07777U) != 0) fail();
}

int SystemFile::close() noexcept
{
    if (!is_open()) return 0;
    return ::close(descriptor_of(std::exchange(handle_, -1))) != 0 && errno != EINTR ? errno : 0;
}

FileStatus status_of(const fs::path& path)
{
    return file_status(system_status(path));
}

void require_writable(const fs::path& path)
{
    if (::access(path.c_str(), W_OK) != 0 && errno != ENOENT) fail();
}

bool rename_file(const fs::path& from, const fs::path& to)
{
    if (::rename(from.c_str(), to.c_str()) == 0) return true;
    if (errno != EXDEV) fail();
    return false;
}

Renamed rename_to_free_name(const fs::path& from, const fs::path& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return Renamed::Done;
    if (errno == EINVAL || errno == ENOSYS) {
        if (::link(from.c_str(), to.c_str()) == 0) return remove_file(from), Renamed::Done;
        if (errno == EPERM || errno == EOPNOTSUPP) {
            struct stat status {};
            if (::lstat(to.c_str(), &status) == 0) return Renamed::NameTaken;
            return rename_file(from, to) ? Renamed::Done : Renamed::OtherFileSystem;
        }
    }
    if (errno == EEXIST) return Renamed::NameTaken;
    if (errno != EXDEV) fail();
    return Renamed::OtherFileSystem;
}

void carry_over(const fs::path& from, const fs::path& to)
{
    const struct stat status = system_status(from);
    const std::array<timespec, 2> times{status.st_atim, status.st_mtim};
    if (::chmod(to.c_str(), status.st_mode & 07777U) != 0) fail();
    if (::utimensat(AT_FDCWD, to.c_str(), times.data(), 0) != 0) fail();
    flush_folder(to.parent_path());
}

void remove_file(const fs::path& path)
{
    if (::unlink(path.c_str()) != 0) fail();
}

void make_folder(const fs::path& path)
{
    fs::create_directory(path);
}

std::uint64_t process_number() noexcept
{
    return static_cast<std::uint64_t>(::getpid());
}

std::span<const FileReason> own_reasons() noexcept
{
    static constexpr std::array<FileReason, 2> reasons{
        {{EDQUOT, U"磁盘配额已用完"}, {ETXTBSY, U"文件正被别的程序使用"}}};
    return reasons;
}

} // namespace tarvik
