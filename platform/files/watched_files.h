#pragma once

#include "platform/files/files.h"

namespace tarvik {

/// Files over other files: every access is one of those behind it. Whoever derives from it hears of the accesses, and
/// answers some of them otherwise.
class WatchedFiles : public Files {
    template <typename Access>
    auto streamed(Access access, TextView path) const
    {
        beginning(path);
        auto result = (files_.*access)(path);
        stream_stands();
        return result;
    }

public:
    explicit WatchedFiles(Files& files) : files_(files) {}

    Text installation_folder() const override { return files_.installation_folder(); }
    std::filesystem::path resolve(TextView path) const override { return files_.resolve(path); }
    bool file_exists(TextView path) const override { return looking(), files_.file_exists(path); }
    bool folder_exists(TextView path) const override { return looking(), files_.folder_exists(path); }
    FileStamp stamp(TextView path) const override { return beginning(path), files_.stamp(path); }
    std::string read(TextView path) const override { return streamed(&Files::read, path); }
    ByteSource open_for_input(TextView path) const override { return streamed(&Files::open_for_input, path); }
    void replace(TextView path, std::string_view bytes) override
    {
        beginning(path), files_.replace(path, bytes), stream_stands();
    }
    std::unique_ptr<ReplacementFile> begin_replacement(TextView path) override
    {
        return streamed(&Files::begin_replacement, path);
    }
    std::unique_ptr<OutputFile> open_for_output(TextView path) override
    {
        return streamed(&Files::open_for_output, path);
    }
    void append(TextView path, std::string_view bytes) override
    {
        beginning(path), files_.append(path, bytes), stream_stands();
    }
    void create_folder(TextView path) override { beginning(path), files_.create_folder(path); }
    bool move_file(TextView from, TextView to) override { return beginning(from), files_.move_file(from, to); }
    std::vector<Text> file_names(TextView folder) const override
    {
        return beginning(folder), files_.file_names(folder);
    }

protected:
    /// Ahead of a look whether something is there.
    virtual void looking() const {}
    /// Ahead of any other access; what it throws comes in place of that.
    virtual void beginning(TextView /*path*/) const {}
    /// A file was read or written, or opened for it.
    virtual void stream_stands() const {}

    Files& files_;
};

} // namespace tarvik
