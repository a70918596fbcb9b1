#pragma once

#include "platform/files/system_file.h"
#include "platform/text/text.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// Work on one file of the disk. A failed call throws std::system_error with a number of <cerrno>; who knows the path
/// as the user does makes a Failure of it.
namespace tarvik {

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
