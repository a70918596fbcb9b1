#include "platform/disk_file.h"

#include "platform/file_failure.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t buffer_size = std::size_t{1} << 18;
constexpr std::string_view unfinished_beginning = ".tarvik-", unfinished_end = ".tmp";

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

class Descriptor {
public:
    Descriptor(const fs::path& path, int flags)
        : value_(unless_interrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, 0666); }))
    {
        if (value_ == -1) fail();
    }
    ~Descriptor()
    {
        if (value_ != -1) ::close(value_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int value() const noexcept { return value_; }
    int release() noexcept { return std::exchange(value_, -1); }
    void close()
    {
        if (::close(release()) != 0 && errno != EINTR) fail();
    }

private:
    int value_;
};

/// 0, or the number of the error that kept some of the bytes from being written.
int write_all(int descriptor, std::string_view bytes) noexcept
{
    while (!bytes.empty()) {
        const auto written = unless_interrupted([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
        if (written < 0) return errno;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

/// Takes away what an earlier, longer file held there. 0, or the number of the error.
int cut_behind_last_write(int descriptor) noexcept
{
    const auto end = ::lseek(descriptor, 0, SEEK_CUR);
    return end >= 0 && ::ftruncate(descriptor, end) == 0 ? 0 : errno;
}

struct stat status_of(int descriptor)
{
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) fail();
    return status;
}

void require_plain(const struct stat& status)
{
    if (S_ISDIR(status.st_mode)) fail(EISDIR);
    if (!S_ISREG(status.st_mode)) fail(EINVAL);
}

std::int64_t nanoseconds(const timespec& time) noexcept
{
    constexpr std::int64_t second = 1'000'000'000;
    return time.tv_sec * second + time.tv_nsec;
}

/// Whether the file system's clock has moved on since the latest change. One that keeps whole seconds moves every other
/// second at the slowest.
bool has_settled(const struct stat& status) noexcept
{
    constexpr std::int64_t coarse_step = 2'000'000'000, fine_step = 100'000'000;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const bool coarse = status.st_mtim.tv_nsec == 0 && status.st_ctim.tv_nsec == 0;
    const std::int64_t changed = std::max(nanoseconds(status.st_mtim), nanoseconds(status.st_ctim));
    return nanoseconds(now) - changed > (coarse ? coarse_step : fine_step);
}

// There are file systems that have nothing to flush in a folder.
void flush_folder(const fs::path& path)
{
    const Descriptor folder(path, O_RDONLY | O_DIRECTORY);
    if (::fsync(folder.value()) != 0 && errno != EINVAL) fail();
}

/// Process numbers come again: with the time of its first file a name of this process cannot.
std::string next_unfinished_name()
{
    static const std::int64_t begun = std::chrono::system_clock::now().time_since_epoch().count();
    static std::atomic<unsigned> made{0};
    return std::string(unfinished_beginning) + std::to_string(::getpid()) + "-" + std::to_string(begun) + "-" +
           std::to_string(++made) + std::string(unfinished_end);
}

} // namespace

/// A new file of a name that nobody else has, which goes unless it is renamed. It is locked as long as it is written,
/// so that others can tell it from a leftover.
class Unfinished {
public:
    explicit Unfinished(const fs::path& folder)
        : path_(folder / next_unfinished_name()), file_(path_, O_WRONLY | O_CREAT | O_EXCL)
    {
        ::flock(file_.value(), LOCK_EX | LOCK_NB);
    }
    ~Unfinished()
    {
        if (!path_.empty()) ::unlink(path_.c_str());
    }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    int descriptor() const noexcept { return file_.value(); }
    void rename_over(const fs::path& target)
    {
        file_.close();
        if (::rename(path_.c_str(), target.c_str()) != 0) fail();
        path_.clear();
    }

private:
    fs::path path_;
    Descriptor file_;
};

FileStamp stamp_of(const fs::path& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) fail();
    return {static_cast<std::uint64_t>(status.st_size), nanoseconds(status.st_mtim), nanoseconds(status.st_ctim),
            status.st_ino, has_settled(status)};
}

std::string read_file(const fs::path& path)
{
    // A pipe without a writer must not hold the program up before it is refused.
    const Descriptor file(path, O_RDONLY | O_NONBLOCK);
    const struct stat status = status_of(file.value());
    require_plain(status);
    std::string bytes(static_cast<std::size_t>(status.st_size) + 1, '\0');
    std::size_t size = 0;
    for (;;) {
        if (size == bytes.size()) bytes.resize(bytes.size() * 2);
        const auto got =
            unless_interrupted([&] { return ::read(file.value(), bytes.data() + size, bytes.size() - size); });
        if (got < 0) fail();
        if (got == 0) break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
}

void append_to_file(const fs::path& path, std::string_view bytes)
{
    Descriptor file(path, O_WRONLY | O_CREAT | O_APPEND);
    const struct stat status = status_of(file.value());
    require_plain(status);
    if (const int error = write_all(file.value(), bytes)) {
        // Half a line is worse than none.
        if (::ftruncate(file.value(), status.st_size) != 0) fail();
        fail(error);
    }
    file.close();
}

BesideFile::BesideFile(const fs::path& target) : target_(target)
{
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(target_, error))) target_ = fs::weakly_canonical(target_);
    struct stat old {};
    const bool exists = ::stat(target_.c_str(), &old) == 0;
    if (exists) {
        require_plain(old);
        if (::access(target_.c_str(), W_OK) != 0) fail();
    }
    file_ = std::make_unique<Unfinished>(target_.parent_path());
    if (!exists) return;
    // Another clerk may have the file by its group alone. Who may not give it away keeps at least that.
    const int descriptor = file_->descriptor();
    if (::fchown(descriptor, old.st_uid, old.st_gid) != 0 && ::fchown(descriptor, uid_t(-1), old.st_gid) != 0)
        errno = 0;
    if (::fchmod(descriptor, old.st_mode & 07777U) != 0) fail();
}

BesideFile::~BesideFile() = default;

void BesideFile::write(std::string_view bytes)
{
    completed_ = false;
    if (const int failed = write_all(file_->descriptor(), bytes)) fail(failed);
}

void BesideFile::complete()
{
    if (!completed_ && ::fdatasync(file_->descriptor()) != 0) fail();
    completed_ = true;
}

void BesideFile::take_place()
{
    complete();
    file_->rename_over(target_);
}

void replace_file(const fs::path& target, std::string_view bytes)
{
    BesideFile file(target);
    file.write(bytes);
    file.take_place();
}

bool is_unfinished(std::string_view file_name) noexcept
{
    return file_name.starts_with(unfinished_beginning) && file_name.ends_with(unfinished_end);
}

void remove_leftovers(const fs::path& folder) noexcept
{
    constexpr std::int64_t just_made = 60'000'000'000; // may not be locked yet
    try {
        timespec now{};
        ::clock_gettime(CLOCK_REALTIME, &now);
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (!is_unfinished(entry.path().filename().native())) continue;
            const Descriptor file(entry.path(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
            const struct stat status = status_of(file.value());
            if (!S_ISREG(status.st_mode) || nanoseconds(now) - nanoseconds(status.st_mtim) < just_made) continue;
            if (::flock(file.value(), LOCK_EX | LOCK_NB) == 0) ::unlink(entry.path().c_str());
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a leftover that cannot be removed harms nobody
    }
}

void move_disk_file(const fs::path& from, const fs::path& to)
{
    struct stat status {};
    if (::stat(from.c_str(), &status) != 0) fail();
    require_plain(status);
    if (::rename(from.c_str(), to.c_str()) == 0) return;
    if (errno != EXDEV) fail();
    replace_file(to, read_file(from));
    const std::array<timespec, 2> times{status.st_atim, status.st_mtim};
    if (::chmod(to.c_str(), status.st_mode & 07777U) != 0) fail();
    if (::utimensat(AT_FDCWD, to.c_str(), times.data(), 0) != 0) fail();
    flush_folder(to.parent_path()); // the new name must be on its disk before the old one goes
    if (::unlink(from.c_str()) != 0) fail();
}

BufferedFile::BufferedFile(const fs::path& path, Text told) : told_(std::move(told)), descriptor_(-1)
{
    waiting_.reserve(buffer_size);
    // The file is cut when it is closed: one that is cut to nothing now would wait until its old bytes are on the disk.
    Descriptor file(path, O_WRONLY | O_CREAT | O_NONBLOCK);
    require_plain(status_of(file.value()));
    descriptor_ = file.release();
}

BufferedFile::~BufferedFile()
{
    if (descriptor_ == -1) return;
    cut_behind_last_write(descriptor_);
    ::close(descriptor_);
}

void BufferedFile::write(std::string_view bytes)
{
    if (waiting_.size() + bytes.size() > buffer_size) flush();
    if (bytes.size() >= buffer_size && error_ == 0) error_ = write_all(descriptor_, bytes);
    else if (error_ == 0) waiting_ += bytes;
}

void BufferedFile::close()
{
    if (descriptor_ == -1) return;
    flush();
    if (const int failed = cut_behind_last_write(descriptor_); error_ == 0) error_ = failed;
    if (::close(std::exchange(descriptor_, -1)) != 0 && error_ == 0 && errno != EINTR) error_ = errno;
    if (error_ != 0) throw file_failure(U"写入文件", told_, error_);
}

void BufferedFile::flush() noexcept
{
    if (error_ == 0) error_ = write_all(descriptor_, waiting_);
    waiting_.clear();
}

} // namespace tarvik
