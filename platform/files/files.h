#pragma once

#include "platform/text/code_page.h"

#include <compare>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// What tells one state of a file from another.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t changed_nanoseconds = 0;
    std::int64_t status_changed_nanoseconds = 0; ///< also of a change that set the time of change back
    std::uint64_t identity = 0; ///< the file's number in its file system; a file renamed over it has another
    /// Whether any later change must give another stamp. Right after a change the file system's clock may not have
    /// moved on: who keeps what a file held looks again until its stamp has settled.
    bool settled = false;

    friend bool operator==(const FileStamp& a, const FileStamp& b)
    {
        return a.size == b.size && a.changed_nanoseconds == b.changed_nanoseconds &&
               a.status_changed_nanoseconds == b.status_changed_nanoseconds && a.identity == b.identity;
    }
};

/// A file that is written from its start in one pass. close() reports any write that failed; without it the file may be
/// short.
class OutputFile {
public:
    virtual ~OutputFile() = default;
    virtual void write(std::string_view bytes) = 0;
    /// Throws Failure when not all bytes could be written.
    virtual void close() = 0;
};

/// A new file that stands beside its target until it takes its place. One that does not leaves the target as it was and
/// nothing beside it. Every operation throws Failure.
class ReplacementFile {
public:
    virtual ~ReplacementFile() = default;
    virtual void write(std::string_view bytes) = 0;
    /// All bytes are on the disk afterwards, still beside the target.
    virtual void complete() = 0;
    /// Completes it, if that was not done, and renames it over the target.
    virtual void take_place() = 0;
};

/// The file system. A path is a text as the user or the program gave it: "\" and "/" both separate, a drive letter
/// stands for a folder (see DriveMap), and a path without a drive or leading separator lies in the installation folder.
/// Away from Windows a name that is not found as written is looked up without regard to case. Every operation but
/// installation_folder(), file_exists() and folder_exists() throws Failure with the path as it was given and the reason
/// in Chinese.
class Files {
public:
    virtual ~Files() = default;

    /// The system's own absolute path without a closing separator.
    virtual Text installation_folder() const = 0;
    /// The system's path of such a one. Throws Failure for one that holds the character 0.
    virtual std::filesystem::path resolve(TextView path) const = 0;

    virtual bool file_exists(TextView path) const = 0;
    virtual bool folder_exists(TextView path) const = 0;
    virtual FileStamp stamp(TextView path) const = 0;
    virtual std::string read(TextView path) const = 0;
    /// The bytes in parts, for a file that may be long; what fails behind the opening is thrown by the source.
    virtual ByteSource open_for_input(TextView path) const = 0;

    /// The file is the old one or the new one, whole, at any instant: written beside the target, flushed, renamed.
    virtual void replace(TextView path, std::string_view bytes) = 0;
    /// The same in steps, for what is too long for one text or must be told before it takes its place.
    virtual std::unique_ptr<ReplacementFile> begin_replacement(TextView path) = 0;
    /// Cuts the file and writes it from the start, not flushed: for views and other files that only this program reads.
    virtual std::unique_ptr<OutputFile> open_for_output(TextView path) = 0;
    virtual void append(TextView path, std::string_view bytes) = 0;

    /// Makes one level; an existing folder is no failure.
    virtual void create_folder(TextView path) = 0;
    /// False, with nothing changed, when something of that name is there: nothing is ever replaced.
    virtual bool move_file(TextView from, TextView to) = 0;
    /// The names of the plain files in a folder, in the order of the upper-cased names.
    virtual std::vector<Text> file_names(TextView folder) const = 0;
};

/// Joins an installation-relative or absolute name: the folder, a backslash, the name.
Text path_in(TextView folder, TextView name);

} // namespace tarvik
