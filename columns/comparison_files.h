#pragma once

#include "mainwindow/scratch_file.h"

#include <vector>

namespace tarvik {

/// The scratch files of the key p. All are cleared together, and a folder that cannot be written is told once.
class ComparisonFiles {
public:
    enum Name { between, between1, between3, between5, betweenping, betweenping1 };

    explicit ComparisonFiles(Program& program, bool told = false) : told_(told)
    {
        for (const std::u32string_view name : {U"between.txt", U"between1.txt", U"between3.txt", U"between5.txt",
                                               U"betweenping.txt", U"betweenping1.txt"}) {
            files_.emplace_back(program, name, told_);
            told_ = told_ || files_.back().failed();
        }
    }
    ScratchFile& operator[](Name name) { return files_[name]; }
    /// Whether the user has heard of a file that could not be written.
    bool told() const { return told_; }

private:
    bool told_;
    std::vector<ScratchFile> files_;
};

} // namespace tarvik
