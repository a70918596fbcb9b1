#pragma once

#include "platform/files/disk_file.h"
#include "platform/text/code_page.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// The folders that drive letters stand for. The letter's case is of no account.
using DriveMap = std::map<char, std::filesystem::path>;

/// Who hears of the accesses to files.
class FileWatcher {
public:
    virtual ~FileWatcher() = default;
    /// Ahead of a look whether something is there.
    virtual void looking() {}
    /// Ahead of any other access, the steps of a file that is being written among them but for its bytes as an output;
    /// what it throws comes in place of that.
    virtual void beginning(TextView /*path*/) {}
    /// A file was read or written, or opened for it.
    virtual void stream_stands() {}
};

/// The file system. A path is a text as the user or the program gave it: "\" and "/" both separate, a drive letter
/// stands for a folder, and a path without a drive or leading separator lies in the installation folder. Away from
/// Windows a drive that the map does not name is the user's home folder, and a name that is not found as written is
/// looked up without regard to case. A name on the disk that is no valid UTF-8 shows with U+FFFD and is found again
/// under the name shown. Every operation but installation_folder(), file_exists() and folder_exists() throws Failure
/// with the path as it was given and the reason in Chinese.
class Files {
public:
    explicit Files(const std::filesystem::path& installation, const DriveMap& drives = {});
    /// The same files with one more watcher, which hears of an access ahead of those that are there.
    Files(const Files& files, FileWatcher& watcher);

    /// The system's own absolute path without a closing separator.
    const Text& installation_folder() const noexcept { return installation_text_; }
    /// The system's path of such a one. Throws Failure for one that holds the character 0.
    std::filesystem::path resolve(TextView path) const;

    bool file_exists(TextView path) const;
    bool folder_exists(TextView path) const;
    FileStamp stamp(TextView path) const;
    std::string read(TextView path) const;
    /// The bytes in parts, for a file that may be long; what fails behind the opening is thrown by the source.
    ByteSource open_for_input(TextView path) const;

    /// The file is the old one or the new one, whole, at any instant: written beside the target, flushed, renamed. It
    /// keeps the permissions and the group of the file that it replaces, a symbolic link is written through and a
    /// target that is write-protected refused. What a killed program left beside it shows in no listing and is removed
    /// at the first replacement in its folder.
    void replace(TextView path, std::string_view bytes);
    /// The same in steps, for what is too long for one text or must be told before it takes its place.
    std::unique_ptr<ReplacementFile> begin_replacement(TextView path);
    /// Cuts the file and writes it from the start, not flushed: for views and other files that only this program reads.
    std::unique_ptr<OutputFile> open_for_output(TextView path);
    void append(TextView path, std::string_view bytes);

    /// Makes one level; an existing folder is no failure.
    void create_folder(TextView path);
    /// False, with nothing changed, when something of that name is there: nothing is ever replaced. But between file
    /// systems a file of the same bytes is the copy of a move that was killed, which is then brought to its end.
    bool move_file(TextView from, TextView to);
    /// The names of the plain files in a folder, in the order of the upper-cased names.
    std::vector<Text> file_names(TextView folder) const;

private:
    template <typename... Values>
    void announce(void (FileWatcher::*event)(Values...), Values... values) const;
    template <typename Work>
    auto accessed(TextView action, TextView path, const Work& work) const;
    std::function<void()> announcing(TextView path) const;
    /// Once for each folder that something is put into.
    std::unique_ptr<ReplacementFile> new_replacement(TextView path);
    void sweep(const std::filesystem::path& folder);

    std::filesystem::path installation_;
    Text installation_text_;
    DriveMap drives_;
    std::set<std::filesystem::path::string_type> swept_; ///< folders that leftovers were removed from
    std::vector<FileWatcher*> watchers_;
};

/// Joins an installation-relative or absolute name: the folder, a backslash, the name.
Text path_in(TextView folder, TextView name);

} // namespace tarvik
