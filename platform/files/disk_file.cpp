#include "platform/files/disk_file.h"

#include "platform/failure.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view unfinished_beginning = ".tarvik-", unfinished_end = ".tmp";

void require(int error)
{
    if (error != 0) throw std::system_error(error, std::generic_category());
}

void require_plain(const FileStatus& status)
{
    if (status.is_folder) require(EISDIR);
    if (!status.is_plain) require(EINVAL);
}

/// On the clock that files get their times from.
std::int64_t nanoseconds_since_1970() noexcept
{
    return std::chrono::nanoseconds(std::chrono::system_clock::now().time_since_epoch()).count();
}

/// Whether the file system's clock has moved on since the latest change. One that keeps whole seconds moves every other
/// second at the slowest.
bool has_settled(const FileStatus& status) noexcept
{
    constexpr std::int64_t second = 1'000'000'000, coarse_step = 2 * second, fine_step = second / 10;
    const bool coarse = status.changed % second == 0 && status.status_changed % second == 0;
    const std::int64_t changed = std::max(status.changed, status.status_changed);
    return nanoseconds_since_1970() - changed > (coarse ? coarse_step : fine_step);
}

/// Process numbers come again: with the time of its first file a name of this process cannot.
std::string next_unfinished_name()
{
    static const std::int64_t begun = nanoseconds_since_1970();
    static std::atomic<unsigned> made{0};
    return std::string(unfinished_beginning) + std::to_string(process_number()) + "-" + std::to_string(begun) + "-" +
           std::to_string(++made) + std::string(unfinished_end);
}

/// A link's target, which must be one that may be replaced.
fs::path checked_target(const fs::path& target)
{
    std::error_code error;
    const bool is_link = fs::is_symlink(fs::symlink_status(target, error));
    fs::path path = is_link ? fs::weakly_canonical(target) : target;
    if (!fs::exists(path, error)) return path;
    require_plain(status_of(path));
    require_writable(path);
    return path;
}

} // namespace

FileStamp stamp_of(const fs::path& path)
{
    const FileStatus status = status_of(path);
    return {status, has_settled(status)};
}

std::shared_ptr<SystemFile> open_for_reading(const fs::path& path)
{
    auto file = std::make_shared<SystemFile>(path, Opening::Read);
    require_plain(file->status());
    return file;
}

std::string read_file(const fs::path& path)
{
    const auto file = open_for_reading(path);
    constexpr std::size_t at_once = std::size_t{1} << 18; // stays near the processor until it is filled
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(file->status().size) + 1);
    for (;;) {
        const std::size_t size = bytes.size();
        if (size == bytes.capacity()) bytes.reserve(size * 2);
        bytes.resize(std::min(size + at_once, bytes.capacity()));
        const std::size_t got = file->read(std::span(bytes).subspan(size));
        bytes.resize(size + got);
        if (got == 0) return bytes;
    }
}

void append_to_file(const fs::path& path, std::string_view bytes)
{
    SystemFile file(path, Opening::Append);
    const FileStatus status = file.status();
    require_plain(status);
    if (const int error = file.write(bytes)) {
        // Half a line is worse than none.
        require(file.cut_to(status.size));
        require(error);
    }
    require(file.close());
}

ReplacementFile::ReplacementFile(fs::path target)
    : target_(std::move(target)), path_(target_.parent_path() / next_unfinished_name()), file_(path_, Opening::New)
{
}

// It has its permissions before the first byte: what others may not read they never may.
ReplacementFile::ReplacementFile(const fs::path& target, TextView shown_path, std::function<void()> ahead)
    : ReplacementFile(checked_target(target))
{
    shown_path_ = shown_path.str();
    ahead_ = std::move(ahead);
    std::error_code error;
    if (fs::exists(target_, error)) file_.take_permissions_of(target_);
}

ReplacementFile::~ReplacementFile()
{
    if (path_.empty()) return;
    file_.close();
    std::error_code ignored;
    fs::remove(path_, ignored);
}

void ReplacementFile::write(std::string_view bytes)
{
    ahead_();
    completed_ = false;
    naming_path(U"写入文件", shown_path_, [&] { require(file_.write(bytes)); });
}

void ReplacementFile::flush()
{
    if (!completed_) file_.flush();
    completed_ = true;
}

void ReplacementFile::complete()
{
    ahead_();
    naming_path(U"写入文件", shown_path_, [&] { flush(); });
}

void ReplacementFile::take_place()
{
    ahead_();
    naming_path(U"写入文件", shown_path_, [&] {
        flush();
        require(file_.close());
        if (!rename_file(path_, target_)) require(EXDEV);
        path_.clear();
    });
}

bool ReplacementFile::take_free_place()
{
    return naming_path(U"写入文件", shown_path_, [&] {
        flush();
        require(file_.close());
        const bool taken = rename_to_free_name(path_, target_) == Renamed::Done;
        if (taken) path_.clear();
        return taken;
    });
}

bool is_unfinished(std::string_view file_name) noexcept
{
    return file_name.starts_with(unfinished_beginning) && file_name.ends_with(unfinished_end);
}

void for_each_entry(const fs::path& folder, const std::function<void(const fs::path&)>& work) noexcept
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        try {
            work(entry->path());
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): another user's, or gone meanwhile
        }
    }
}

bool is_just_made(const FileStatus& status) noexcept
{
    constexpr std::int64_t minute = 60'000'000'000;
    return nanoseconds_since_1970() - status.changed < minute;
}

bool is_left_behind(const fs::path& file)
{
    SystemFile opened(file, Opening::Leftover);
    const FileStatus status = opened.status();
    return status.is_plain && !is_just_made(status) && opened.lock();
}

void remove_leftovers(const fs::path& folder) noexcept
{
    for_each_entry(folder, [](const fs::path& path) {
        if (is_unfinished(utf8_of(path.filename())) && is_left_behind(path)) remove_file(path);
    });
}

bool move_disk_file(const fs::path& from, const fs::path& to)
{
    require_plain(status_of(from));
    const Renamed renamed = rename_to_free_name(from, to);
    if (renamed != Renamed::OtherFileSystem) return renamed == Renamed::Done;
    const std::string bytes = read_file(from);
    std::error_code error;
    if (fs::exists(fs::symlink_status(to, error))) {
        // A move that was killed behind its copy is brought to its end.
        if (!fs::is_regular_file(to, error) || read_file(to) != bytes) return false;
    } else {
        ReplacementFile copy(to, text_of(to));
        copy.write(bytes);
        if (!copy.take_free_place()) return false;
    }
    carry_over(from, to); // the new name must be on its disk before the old one goes
    remove_file(from);
    return true;
}

// The file is cut when it is closed: one that is cut to nothing now would wait until its old bytes are on the disk.
OutputFile::OutputFile(const fs::path& path, TextView shown_path, std::function<void()> ahead)
    : shown_path_(shown_path.str()), ahead_(std::move(ahead)), file_(path, Opening::Scratch)
{
    require_plain(file_.status());
}

OutputFile::~OutputFile()
{
    if (file_.is_open()) file_.cut_behind_last_write();
}

void OutputFile::write(std::string_view bytes)
{
    if (error_ == 0) error_ = file_.write(bytes);
}

void OutputFile::close()
{
    if (!file_.is_open()) return;
    ahead_();
    if (const int failed = file_.cut_behind_last_write(); error_ == 0) error_ = failed;
    if (const int failed = file_.close(); error_ == 0) error_ = failed;
    if (error_ != 0) throw file_failure(U"写入文件", shown_path_, error_);
}

} // namespace tarvik
