#pragma once

#include "platform/files/files.h"

#include <map>
#include <set>

namespace tarvik {

/// The folders that drive letters stand for. The letter's case is of no account.
using DriveMap = std::map<char, std::filesystem::path>;

/// The real file system. Away from Windows a drive that the map does not name is the user's home folder.
///
/// Also:
/// - replace() keeps the permissions and the group of the file that it replaces, writes through a symbolic link and
///   refuses a target that is write-protected. A temporary file that a killed program left behind shows in no listing
///   and is removed at the first replacement in its folder.
/// - move_file() works across file systems; there a file of the same bytes is the copy of a move that was killed, which
///   is then brought to its end.
/// - A name on the disk that is no valid UTF-8 shows with U+FFFD and is found again under the name shown.
class DiskFiles final : public Files {
public:
    explicit DiskFiles(const std::filesystem::path& installation, const DriveMap& drives = {});

    Text installation_folder() const override;
    std::filesystem::path resolve(TextView path) const override;

    bool file_exists(TextView path) const override;
    bool folder_exists(TextView path) const override;
    FileStamp stamp(TextView path) const override;
    std::string read(TextView path) const override;
    ByteSource open_for_input(TextView path) const override;

    void replace(TextView path, std::string_view bytes) override;
    std::unique_ptr<ReplacementFile> begin_replacement(TextView path) override;
    std::unique_ptr<OutputFile> open_for_output(TextView path) override;
    void append(TextView path, std::string_view bytes) override;

    void create_folder(TextView path) override;
    bool move_file(TextView from, TextView to) override;
    std::vector<Text> file_names(TextView folder) const override;

private:
    /// Once for each folder that something is put into.
    void sweep(const std::filesystem::path& folder);

    std::filesystem::path installation_;
    Text installation_text_;
    DriveMap drives_;
    std::set<std::filesystem::path::string_type> swept_; ///< folders that leftovers were removed from
};

} // namespace tarvik
