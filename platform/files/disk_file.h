#pragma once

#include "platform/text/text.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// Work on one file of the disk. A failed call throws std::system_error with a number of <cerrno>; who knows the path
/// as the user does makes a Failure of it.
namespace tarvik {

// The system's own calls, with a side for each system. Those that may not throw give the number of the error.

enum class Opening {
    Read,     ///< a pipe without a writer does not hold the program up
    Leftover, ///< the same, for a file that may be removed; no link is followed
    Append,   ///< made where it is not there
    Scratch,  ///< to be written from its start, made where it is not there; what it holds stays until it is cut
    New       ///< must not be there yet; locked as long as it is open
};

struct FileStatus {
    bool is_plain = false, is_folder = false;
    std::uint64_t size = 0;
    std::int64_t changed = 0;        ///< nanoseconds since 1970
    std::int64_t status_changed = 0; ///< also by a change that set the time of change back
    std::uint64_t identity = 0;      ///< its number in its file system; a file renamed over it has another

    bool operator==(const FileStatus&) const = default;
};

class SystemFile {
public:
    SystemFile(const std::filesystem::path& path, Opening opening);
    ~SystemFile() { close(); }
    SystemFile(const SystemFile&) = delete;
    SystemFile& operator=(const SystemFile&) = delete;

    bool is_open() const noexcept { return handle_ != -1; }
    FileStatus status() const;
    /// The number of bytes read, 0 at the end.
    std::size_t read(std::span<char> target);
    /// 0, or the number of the error that kept some of the bytes from being written.
    int write(std::string_view bytes) noexcept;
    /// Takes away what an earlier, longer file held behind the last write.
    int cut_behind_last_write() noexcept;
    int cut_to(std::uint64_t size) noexcept;
    /// To the disk.
    void flush();
    /// False where another process holds it locked.
    bool lock() noexcept;
    /// Gives it the permissions of a file, and its owner and group where the system allows that.
    void take_permissions_of(const std::filesystem::path& other);
    int close() noexcept;

private:
    std::intptr_t handle_ = -1;
};

FileStatus status_of(const std::filesystem::path& path);
/// A file that is not there is no fault, one that is write-protected or cannot be a file's name is.
void require_writable(const std::filesystem::path& path);
/// Whether a rename does it; not where they lie in different file systems.
bool rename_file(const std::filesystem::path& from, const std::filesystem::path& to);
enum class Renamed { Done, NameTaken, OtherFileSystem };
/// A rename that never replaces anything, but on a file system that knows neither such a rename nor second names.
Renamed rename_to_free_name(const std::filesystem::path& from, const std::filesystem::path& to);
/// Gives `to` the permissions and times of `from`, and has its name on the disk.
void carry_over(const std::filesystem::path& from, const std::filesystem::path& to);
void remove_file(const std::filesystem::path& path);
/// One level; an existing folder is no fault.
void make_folder(const std::filesystem::path& path);
std::uint64_t process_number() noexcept;

// What is made of them on every system

/// What tells one state of a file from another.
struct FileStamp : FileStatus {
    /// Whether any later change must give another stamp. Right after a change the file system's clock may not have
    /// moved on: who keeps what a file held looks again until its stamp has settled.
    bool settled = false;

    bool operator==(const FileStamp& other) const { return FileStatus::operator==(other); }
};

FileStamp stamp_of(const std::filesystem::path& path);
/// Only plain files are read.
std::shared_ptr<SystemFile> open_for_reading(const std::filesystem::path& path);
std::string read_file(const std::filesystem::path& path);
void append_to_file(const std::filesystem::path& path, std::string_view bytes);

/// A new file that stands beside its target until it takes its place; one that does not leaves the target as it was and
/// nothing beside it. It is locked as long as it is written, so that others can tell it from a leftover, and has the
/// target's permissions, and its owner and group where the system allows that. Its operations throw Failure, the
/// constructor as the functions here do.
class ReplacementFile {
public:
    /// A target that is write-protected or no plain file is refused. A link is written through. `shown_path` is what a
    /// failure names; `ahead` is called ahead of each of the first three steps, which what it throws takes the place
    /// of.
    ReplacementFile(
        const std::filesystem::path& target, TextView shown_path, std::function<void()> ahead = [] {});
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    void write(std::string_view bytes);
    /// All bytes are on the disk afterwards, still beside the target.
    void complete();
    /// Completes it, if that was not done, and renames it over the target.
    void take_place();
    /// The same where nothing is; false, and what stands there stays, where something is.
    bool take_free_place();
    /// Where it stands.
    std::filesystem::path folder() const { return target_.parent_path(); }
    const Text& shown_path() const { return shown_path_; }

private:
    explicit ReplacementFile(std::filesystem::path target);
    void flush();

    std::filesystem::path target_, path_; ///< path_ is empty when the file has taken its place
    Text shown_path_;
    std::function<void()> ahead_;
    SystemFile file_;
    bool completed_ = false;
};

/// Whether a file name is one that a replacement has until it takes its place.
bool is_unfinished(std::string_view file_name) noexcept;
/// Work with each entry of a folder; what fails with one of them is passed over.
void for_each_entry(const std::filesystem::path& folder,
                    const std::function<void(const std::filesystem::path&)>& work) noexcept;
/// Whether a program may not yet have come to lock it.
bool is_just_made(const FileStatus& status) noexcept;
/// Whether the file is one that a program locks as long as it lives, and which has been killed.
bool is_left_behind(const std::filesystem::path& file);
/// Removes what runs that were killed left unfinished in a folder; files that a living process still writes stay.
void remove_leftovers(const std::filesystem::path& folder) noexcept;
/// A rename; between file systems a copy with the same mode and times, which is on its disk before the file is removed.
/// False, with nothing changed, when `to` is there; but between file systems a file with the same bytes counts as the
/// copy.
bool move_disk_file(const std::filesystem::path& from, const std::filesystem::path& to);

/// A file that is written from its start in one pass: opened and cut at once. close() throws Failure when not all bytes
/// could be written; without it the file may be short.
class OutputFile {
public:
    /// `shown_path` is what a failure names; `ahead` is called ahead of close(), which what it throws takes the place
    /// of.
    OutputFile(const std::filesystem::path& path, TextView shown_path, std::function<void()> ahead);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void write(std::string_view bytes);
    void close();

private:
    Text shown_path_;
    std::function<void()> ahead_;
    SystemFile file_;
    int error_ = 0;
};

} // namespace tarvik
