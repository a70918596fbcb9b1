#include "platform/files/disk_file.h"

#include "platform/files/file_failure.h"
#include "platform/files/path_text.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t buffer_size = std::size_t{1} << 18;
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

/// Whether the file system's clock has moved on since the latest change. One that keeps whole seconds moves every other
/// second at the slowest.
bool has_settled(const FileStatus& status) noexcept
{
    constexpr std::int64_t second = 1'000'000'000, coarse_step = 2 * second, fine_step = second / 10;
    const bool coarse = status.changed % second == 0 && status.status_changed % second == 0;
    const std::int64_t changed = std::max(status.changed, status.status_changed);
    return file_clock_now() - changed > (coarse ? coarse_step : fine_step);
}

/// Process numbers come again: with the time of its first file a name of this process cannot.
std::string next_unfinished_name()
{
    static const std::int64_t begun = std::chrono::system_clock::now().time_since_epoch().count();
    static std::atomic<unsigned> made{0};
    return std::string(unfinished_beginning) + std::to_string(process_number()) + "-" + std::to_string(begun) + "-" +
           std::to_string(++made) + std::string(unfinished_end);
}

} // namespace

/// A new file of a name that nobody else has, which goes unless it is renamed. It is locked as long as it is written,
/// so that others can tell it from a leftover.
class Unfinished {
public:
    explicit Unfinished(const fs::path& folder) : path_(folder / next_unfinished_name()), file_(path_, Opening::New) {}
    ~Unfinished()
    {
        if (path_.empty()) return;
        file_.close();
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    SystemFile& file() noexcept { return file_; }
    void rename_over(const fs::path& target)
    {
        require(file_.close());
        if (!rename_file(path_, target)) require(EXDEV);
        path_.clear();
    }
    bool link_as(const fs::path& target) const noexcept { return link_file(path_, target); }

private:
    fs::path path_;
    SystemFile file_;
};

FileStamp stamp_of(const fs::path& path)
{
    const FileStatus status = status_of(path);
    return {status.size, status.changed, status.status_changed, status.identity, has_settled(status)};
}

std::string read_file(const fs::path& path)
{
    SystemFile file(path, Opening::Read);
    const FileStatus status = file.status();
    require_plain(status);
    constexpr std::size_t at_once = std::size_t{1} << 18; // stays near the processor until it is filled
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(status.size) + 1);
    for (;;) {
        const std::size_t size = bytes.size();
        if (size == bytes.capacity()) bytes.reserve(size * 2);
        bytes.resize(std::min(size + at_once, bytes.capacity()));
        const std::size_t got = file.read(std::span(bytes).subspan(size));
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

BesideFile::BesideFile(const fs::path& target) : target_(target)
{
    std::error_code error;
    fs::file_status status = fs::symlink_status(target_, error);
    if (fs::is_symlink(status)) {
        target_ = fs::weakly_canonical(target_);
        status = fs::status(target_, error);
    }
    const bool exists = fs::exists(status);
    if (exists) {
        require_plain(status_of(target_));
        require_writable(target_);
    }
    file_ = std::make_unique<Unfinished>(target_.parent_path());
    if (exists) file_->file().take_permissions_of(target_);
}

BesideFile::~BesideFile() = default;

void BesideFile::write(std::string_view bytes)
{
    completed_ = false;
    require(file_->file().write(bytes));
}

void BesideFile::complete()
{
    if (!completed_) file_->file().flush();
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

void place_new_file(const fs::path& target, std::string_view bytes)
{
    Unfinished file(target.parent_path());
    require(file.file().write(bytes));
    file.file().flush();
    if (file.link_as(target)) return;
    std::error_code error;
    if (!fs::exists(fs::symlink_status(target, error))) file.rename_over(target);
}

bool is_unfinished(std::string_view file_name) noexcept
{
    return file_name.starts_with(unfinished_beginning) && file_name.ends_with(unfinished_end);
}

void remove_leftovers(const fs::path& folder) noexcept
{
    constexpr std::int64_t just_made = 60'000'000'000; // may not be locked yet
    try {
        const std::int64_t now = file_clock_now();
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (!is_unfinished(utf8_of(entry.path().filename()))) continue;
            SystemFile file(entry.path(), Opening::Leftover);
            const FileStatus status = file.status();
            if (!status.is_plain || now - status.changed < just_made) continue;
            if (file.lock()) remove_file(entry.path());
        }
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): a leftover that cannot be removed harms nobody
    }
}

void move_disk_file(const fs::path& from, const fs::path& to)
{
    require_plain(status_of(from));
    if (rename_file(from, to)) return;
    replace_file(to, read_file(from));
    carry_over(from, to); // the new name must be on its disk before the old one goes
    remove_file(from);
}

// The file is cut when it is closed: one that is cut to nothing now would wait until its old bytes are on the disk.
BufferedFile::BufferedFile(const fs::path& path, Text shown_path)
    : shown_path_(std::move(shown_path)), file_(path, Opening::Scratch)
{
    require_plain(file_.status());
    waiting_.reserve(buffer_size);
}

BufferedFile::~BufferedFile()
{
    if (file_.is_open()) file_.cut_behind_last_write();
}

void BufferedFile::write(std::string_view bytes)
{
    if (waiting_.size() + bytes.size() > buffer_size) flush();
    if (bytes.size() >= buffer_size && error_ == 0) error_ = file_.write(bytes);
    else if (error_ == 0) waiting_ += bytes;
}

void BufferedFile::close()
{
    if (!file_.is_open()) return;
    flush();
    if (const int failed = file_.cut_behind_last_write(); error_ == 0) error_ = failed;
    if (const int failed = file_.close(); error_ == 0) error_ = failed;
    if (error_ != 0) throw file_failure(U"写入文件", shown_path_, error_);
}

void BufferedFile::flush() noexcept
{
    if (error_ == 0) error_ = file_.write(waiting_);
    waiting_.clear();
}

} // namespace tarvik
