#pragma once

#include "platform/files/files.h"

#include <functional>
#include <memory>

namespace tarvik::test {

/// Files over other files with which something happens when it is asked for: every operation that reads or changes
/// something counts, and the one with the number that was set fails, or comes upon a disk that somebody else has
/// changed that very moment. So each place where work can break off is reached by setting 1, 2, 3 ... until the work
/// gets through.
class FaultyFiles final : public Files {
public:
    /// Gets the path that the operation is asked for. What it throws comes in place of the operation, which else is
    /// done.
    using Trouble = std::function<void(TextView path)>;

    explicit FaultyFiles(Files& files) : files_(files) {}

    /// Counts from 1, from now on. 0: nothing happens.
    void trouble_at(std::size_t operation, Trouble trouble)
    {
        counted_ = 0;
        troubled_ = operation;
        trouble_ = std::move(trouble);
    }
    /// Throws Failure in the words of a full disk.
    void fail_at(std::size_t operation);
    std::size_t counted() const { return counted_; }

    Text installation_folder() const override { return files_.installation_folder(); }
    std::filesystem::path resolve(TextView path) const override { return files_.resolve(path); }
    bool file_exists(TextView path) const override { return files_.file_exists(path); }
    bool folder_exists(TextView path) const override { return files_.folder_exists(path); }
    FileStamp stamp(TextView path) const override { return count(path), files_.stamp(path); }
    std::string read(TextView path) const override { return count(path), files_.read(path); }
    ByteSource open_for_input(TextView path) const override { return count(path), files_.open_for_input(path); }
    void replace(TextView path, std::string_view bytes) override { count(path), files_.replace(path, bytes); }
    std::unique_ptr<ReplacementFile> begin_replacement(TextView path) override;
    std::unique_ptr<OutputFile> open_for_output(TextView path) override;
    void append(TextView path, std::string_view bytes) override { count(path), files_.append(path, bytes); }
    void create_folder(TextView path) override { count(path), files_.create_folder(path); }
    bool move_file(TextView from, TextView to) override { return count(from), files_.move_file(from, to); }
    std::vector<Text> file_names(TextView folder) const override { return count(folder), files_.file_names(folder); }

private:
    class Replacement;
    class Output;
    void count(TextView path) const;

    Files& files_;
    mutable std::size_t counted_ = 0;
    std::size_t troubled_ = 0;
    Trouble trouble_;
};

} // namespace tarvik::test
