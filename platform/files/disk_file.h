#pragma once

#include "platform/files/files.h"
#include "platform/files/system_file.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

/// Work on one file of the disk. A failed call throws std::system_error with a number of <cerrno>; who knows the path
/// as the user does makes a Failure of it.
namespace tarvik {

FileStamp stamp_of(const std::filesystem::path& path);
/// Only plain files are read.
std::shared_ptr<SystemFile> open_for_reading(const std::filesystem::path& path);
std::string read_file(const std::filesystem::path& path);
void append_to_file(const std::filesystem::path& path, std::string_view bytes);

/// A file beside its target, locked as long as it is written, so that others can tell it from a leftover. It has the
/// target's permissions, and its owner and group where the system allows that. Its operations throw Failure, the
/// constructor as the functions here do.
class DiskReplacement final : public ReplacementFile {
public:
    /// A target that is write-protected or no plain file is refused. A link is written through. `shown_path` is what a
    /// failure names.
    DiskReplacement(const std::filesystem::path& target, TextView shown_path);
    ~DiskReplacement() override;
    DiskReplacement(const DiskReplacement&) = delete;
    DiskReplacement& operator=(const DiskReplacement&) = delete;

    void write(std::string_view bytes) override;
    void complete() override;
    void take_place() override;
    /// The same where nothing is; false, and what stands there stays, where something is.
    bool take_free_place();
    /// Where it stands.
    std::filesystem::path folder() const { return target_.parent_path(); }

private:
    explicit DiskReplacement(std::filesystem::path target);
    void flush();

    std::filesystem::path target_, path_; ///< path_ is empty when the file has taken its place
    Text shown_path_;
    SystemFile file_;
    bool completed_ = false;
};

/// Whether a file name is one that a replacement has until it takes its place.
bool is_unfinished(std::string_view file_name) noexcept;
/// Removes what runs that were killed left unfinished in a folder; files that a living process still writes stay.
void remove_leftovers(const std::filesystem::path& folder) noexcept;
/// A rename; between file systems a copy with the same mode and times, which is on its disk before the file is removed.
/// False, with nothing changed, when `to` is there; but between file systems a file with the same bytes counts as the
/// copy.
bool move_disk_file(const std::filesystem::path& from, const std::filesystem::path& to);

/// Opened and cut at once; a failed write is kept until close().
class DiskOutput final : public OutputFile {
public:
    /// `shown_path` is what a failure names.
    DiskOutput(const std::filesystem::path& path, Text shown_path);
    ~DiskOutput() override;
    DiskOutput(const DiskOutput&) = delete;
    DiskOutput& operator=(const DiskOutput&) = delete;

    void write(std::string_view bytes) override;
    void close() override;

private:
    Text shown_path_;
    SystemFile file_;
    int error_ = 0;
};

} // namespace tarvik
