#pragma once

#include "platform/files.h"

#include <filesystem>
#include <string>
#include <string_view>

/// Work on one file of the disk by the system's own calls. A failed call throws std::system_error with the system's
/// number; who knows the path as told makes a Failure of it.
namespace tarvik {

FileStamp stamp_of(const std::filesystem::path& path);
/// Only plain files are read.
std::string read_file(const std::filesystem::path& path);
void append_to_file(const std::filesystem::path& path, std::string_view bytes);

/// Writes beside the target, flushes to the disk and renames. When that fails the target is as it was and nothing is
/// left beside it.
void replace_file(const std::filesystem::path& target, std::string_view bytes);
/// Whether a file name is one that replace_file() gives to its unfinished files.
bool is_unfinished(std::string_view file_name) noexcept;
/// A rename; between file systems a copy with the same mode and times, which is on its disk before the file is removed.
void move_disk_file(const std::filesystem::path& from, const std::filesystem::path& to);

/// Opened and cut at once; a failed write is kept until close().
class BufferedFile final : public OutputFile {
public:
    BufferedFile(const std::filesystem::path& path, Text told);
    ~BufferedFile() override;
    BufferedFile(const BufferedFile&) = delete;
    BufferedFile& operator=(const BufferedFile&) = delete;

    void write(std::string_view bytes) override;
    void close() override;

private:
    void flush() noexcept;

    Text told_;
    std::string waiting_;
    int descriptor_;
    int error_ = 0;
};

} // namespace tarvik
