#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

/// The system's own calls on files, with a side for each system. A failed call throws std::system_error with a number
/// of <cerrno>, or gives that number where it may not throw.
namespace tarvik {

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

} // namespace tarvik
