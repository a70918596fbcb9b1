#include "platform/files/disk_file.h"

#include "platform/failure.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <memory>
#include <system_error>
#include <utility>
#include <windows.h>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

/// A disk quota that is used up is reported by this number of the system's: <cerrno> has none for it, and the
/// compiler's headers do not name it.
constexpr int full_quota = 1295;

/// What the standard library knows no number for, or one that says something else.
struct ErrorRow {
    DWORD system;
    int error;
};
constexpr ErrorRow error_rows[] = {
    {ERROR_USER_MAPPED_FILE, EBUSY},       {ERROR_DELETE_PENDING, EBUSY}, {full_quota, full_quota},
    {ERROR_INVALID_NAME, EINVAL},          {ERROR_NOT_READY, ENODEV},     {ERROR_FILE_TOO_LARGE, EFBIG},
    {ERROR_BUFFER_OVERFLOW, ENAMETOOLONG},
};

/// The error number that stands for what the system reports; EIO where none does.
int number_of(DWORD system) noexcept
{
    const auto* row = std::ranges::find(error_rows, system, &ErrorRow::system);
    if (row != std::end(error_rows)) return row->error;
    const auto condition = std::system_category().default_error_condition(static_cast<int>(system));
    return condition.category() == std::generic_category() ? condition.value() : EIO;
}

[[noreturn]] void fail(int error)
{
    throw std::system_error(error, std::generic_category());
}

constexpr std::size_t longest_path = MAX_PATH - 1;        // units; those of the closing 0 are not counted
constexpr std::size_t longest_folder = longest_path - 12; // in which there is room for a short name

/// A longer one is said to be not there by some calls and taken by others, and most programs do not open it.
void require_fitting(const fs::path& path, std::size_t longest = longest_path)
{
    if (path.native().size() > longest) fail(ENAMETOOLONG);
}

/// The system tells the same of a path whose folder is not there and of one that leads through a file.
[[noreturn]] void fail_with(DWORD system, const fs::path& path)
{
    const DWORD parent = ::GetFileAttributesW(path.parent_path().c_str());
    const bool through_file = parent != INVALID_FILE_ATTRIBUTES && (parent & FILE_ATTRIBUTE_DIRECTORY) == 0;
    fail(through_file ? ENOTDIR : number_of(system));
}

void require_usable_name(const fs::path& path)
{
    if (!is_usable_name(text_of(path.filename()))) fail(EINVAL);
}

HANDLE handle_of(std::intptr_t handle) noexcept
{
    return reinterpret_cast<HANDLE>(handle); // NOLINT(performance-no-int-to-ptr): what the system calls a handle
}

struct Way {
    DWORD access, creation, flags;
};
Way way_of(Opening opening) noexcept
{
    switch (opening) {
    case Opening::Read: return {GENERIC_READ, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN};
    case Opening::Leftover: return {GENERIC_READ, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT};
    case Opening::Append: return {FILE_APPEND_DATA | GENERIC_READ | FILE_WRITE_DATA, OPEN_ALWAYS, 0};
    case Opening::Scratch: return {GENERIC_WRITE, OPEN_ALWAYS, 0};
    default: return {GENERIC_WRITE, CREATE_NEW, 0};
    }
}

using OpenHandle = std::unique_ptr<void, decltype(&::CloseHandle)>;

/// Others may go on using the file as the systems without locks let them. Folders are opened too, to be refused by
/// name.
OpenHandle open_handle(const fs::path& path, const Way& way)
{
    require_fitting(path);
    const HANDLE handle =
        ::CreateFileW(path.c_str(), way.access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                      way.creation, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS | way.flags, nullptr);
    if (handle == INVALID_HANDLE_VALUE) fail_with(::GetLastError(), path);
    return {handle, ::CloseHandle};
}

/// Nanoseconds since 1970 of hundreds of nanoseconds since 1601.
std::int64_t nanoseconds(std::int64_t ticks) noexcept
{
    constexpr std::int64_t ticks_until_1970 = 116'444'736'000'000'000;
    return (ticks - ticks_until_1970) * 100;
}

std::int64_t nanoseconds(const FILETIME& time) noexcept
{
    return nanoseconds(static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32U | time.dwLowDateTime));
}

FileStatus status_of_handle(HANDLE handle)
{
    if (::GetFileType(handle) != FILE_TYPE_DISK) return {};
    BY_HANDLE_FILE_INFORMATION file{};
    FILE_BASIC_INFO times{};
    if (::GetFileInformationByHandle(handle, &file) == 0) fail(number_of(::GetLastError()));
    if (::GetFileInformationByHandleEx(handle, FileBasicInfo, &times, sizeof(times)) == 0)
        fail(number_of(::GetLastError()));
    const bool is_folder = (file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return {.is_plain = !is_folder,
            .is_folder = is_folder,
            .size = std::uint64_t{file.nFileSizeHigh} << 32U | file.nFileSizeLow,
            .changed = nanoseconds(file.ftLastWriteTime),
            .status_changed = nanoseconds(times.ChangeTime.QuadPart),
            .identity = std::uint64_t{file.nFileIndexHigh} << 32U | file.nFileIndexLow};
}

bool is_held(DWORD error) noexcept
{
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
}

/// Programs that look new files over hold them for a moment: the work is tried again for half a second. The last error.
template <typename Work>
DWORD tried_again(const Work& work) noexcept
{
    constexpr int most_attempts = 11;
    constexpr DWORD pause = 50; // milliseconds
    DWORD error = ERROR_SUCCESS;
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        if (attempt > 0) ::Sleep(pause);
        error = work() ? ERROR_SUCCESS : ::GetLastError();
        if (!is_held(error)) break;
    }
    return error;
}

DWORD move_error(const fs::path& from, const fs::path& to, DWORD flags)
{
    require_usable_name(to);
    require_fitting(to);
    return tried_again([&] { return ::MoveFileExW(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH) != 0; });
}

} // namespace

SystemFile::SystemFile(const fs::path& path, Opening opening)
{
    require_usable_name(path);
    handle_ = reinterpret_cast<std::intptr_t>(open_handle(path, way_of(opening)).release());
    if (opening == Opening::New) lock();
    if (opening == Opening::Append) ::SetFilePointer(handle_of(handle_), 0, nullptr, FILE_END);
}

FileStatus SystemFile::status() const
{
    return status_of_handle(handle_of(handle_));
}

std::size_t SystemFile::read(std::span<char> target)
{
    constexpr std::size_t most = std::size_t{1} << 30;
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(std::min(target.size(), most));
    if (::ReadFile(handle_of(handle_), target.data(), wanted, &got, nullptr) == 0) fail(number_of(::GetLastError()));
    return got;
}

int SystemFile::write(std::string_view bytes) noexcept
{
    constexpr std::size_t most = std::size_t{1} << 26;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), most));
        if (::WriteFile(handle_of(handle_), bytes.data(), wanted, &written, nullptr) == 0)
            return number_of(::GetLastError());
        bytes.remove_prefix(written);
    }
    return 0;
}

int SystemFile::cut_behind_last_write() noexcept
{
    return ::SetEndOfFile(handle_of(handle_)) != 0 ? 0 : number_of(::GetLastError());
}

int SystemFile::cut_to(std::uint64_t size) noexcept
{
    LARGE_INTEGER place{};
    place.QuadPart = static_cast<LONGLONG>(size);
    if (::SetFilePointerEx(handle_of(handle_), place, nullptr, FILE_BEGIN) == 0) return number_of(::GetLastError());
    return cut_behind_last_write();
}

void SystemFile::flush()
{
    if (::FlushFileBuffers(handle_of(handle_)) == 0) fail(number_of(::GetLastError()));
}

// A byte that no file holds: a lock keeps others from the bytes themselves.
bool SystemFile::lock() noexcept
{
    OVERLAPPED place{};
    place.OffsetHigh = 0x7fff'ffff;
    return ::LockFileEx(handle_of(handle_), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
}

// A new file inherits what its folder lets others do.
void SystemFile::take_permissions_of(const fs::path& /*other*/) {}

int SystemFile::close() noexcept
{
    if (!is_open()) return 0;
    return ::CloseHandle(handle_of(std::exchange(handle_, -1))) != 0 ? 0 : number_of(::GetLastError());
}

FileStatus status_of(const fs::path& path)
{
    return status_of_handle(open_handle(path, {FILE_READ_ATTRIBUTES, OPEN_EXISTING, 0}).get());
}

void require_writable(const fs::path& path)
{
    require_usable_name(path);
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) fail(EACCES);
}

bool rename_file(const fs::path& from, const fs::path& to)
{
    const DWORD error = move_error(from, to, MOVEFILE_REPLACE_EXISTING);
    if (error == ERROR_SUCCESS) return true;
    if (error == ERROR_NOT_SAME_DEVICE) return false;
    // What is replaced while another program holds it is reported as if one had no right to it.
    const DWORD target = ::GetFileAttributesW(to.c_str());
    constexpr DWORD hindrances = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY;
    if (error == ERROR_ACCESS_DENIED && target != INVALID_FILE_ATTRIBUTES && (target & hindrances) == 0) fail(EBUSY);
    fail_with(error, to);
}

Renamed rename_to_free_name(const fs::path& from, const fs::path& to)
{
    const DWORD error = move_error(from, to, 0);
    if (error == ERROR_SUCCESS) return Renamed::Done;
    if (error == ERROR_NOT_SAME_DEVICE) return Renamed::OtherFileSystem;
    // A folder of that name makes it a refused access.
    if (::GetFileAttributesW(to.c_str()) != INVALID_FILE_ATTRIBUTES) return Renamed::NameTaken;
    fail_with(error, to);
}

void carry_over(const fs::path& from, const fs::path& to)
{
    const OpenHandle source = open_handle(from, {FILE_READ_ATTRIBUTES, OPEN_EXISTING, 0});
    const OpenHandle target = open_handle(to, {FILE_WRITE_ATTRIBUTES, OPEN_EXISTING, 0});
    FILETIME made{}, read{}, changed{};
    if (::GetFileTime(source.get(), &made, &read, &changed) == 0 ||
        ::SetFileTime(target.get(), &made, &read, &changed) == 0)
        fail(number_of(::GetLastError()));
}

void remove_file(const fs::path& path)
{
    const DWORD error = tried_again([&] { return ::DeleteFileW(path.c_str()) != 0; });
    if (error != ERROR_SUCCESS) fail_with(error, path);
}

void make_folder(const fs::path& path)
{
    require_usable_name(path);
    require_fitting(path, longest_folder);
    if (::CreateDirectoryW(path.c_str(), nullptr) != 0) return;
    const DWORD error = ::GetLastError();
    const DWORD there = ::GetFileAttributesW(path.c_str());
    if (there == INVALID_FILE_ATTRIBUTES) fail_with(error, path);
    if ((there & FILE_ATTRIBUTE_DIRECTORY) == 0) fail(ENOTDIR);
}

std::uint64_t process_number() noexcept
{
    return ::GetCurrentProcessId();
}

std::span<const FileReason> own_reasons() noexcept
{
    static constexpr std::array<FileReason, 2> reasons{
        {{full_quota, U"磁盘配额已用完"}, {ENAMETOOLONG, U"名称太长，连同所在的文件夹不能超过 259 个字符"}}};
    return reasons;
}

} // namespace tarvik
