#pragma once

#include "platform/files/watched_files.h"

#include <functional>
#include <memory>

namespace tarvik::test {

/// Files over other files with which something happens when it is asked for: every operation that reads or changes
/// something counts, and the one with the number that was set fails, or comes upon a disk that somebody else has
/// changed that very moment. So each place where work can break off is reached by setting 1, 2, 3 ... until the work
/// gets through.
class FaultyFiles final : public WatchedFiles {
public:
    /// Gets the path that the operation is asked for. What it throws comes in place of the operation, which else is
    /// done.
    using Trouble = std::function<void(TextView path)>;

    using WatchedFiles::WatchedFiles;

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

    std::unique_ptr<ReplacementFile> begin_replacement(TextView path) override;
    std::unique_ptr<OutputFile> open_for_output(TextView path) override;

private:
    class Replacement;
    class Output;
    void beginning(TextView path) const override;

    mutable std::size_t counted_ = 0;
    std::size_t troubled_ = 0;
    Trouble trouble_;
};

} // namespace tarvik::test
