#pragma once

#include "mainwindow/scratch_file.h"

#include <vector>

namespace tarvik {

/// The scratch files of the key p, which are cleared together.
class ComparisonFiles {
public:
    enum Name { between, between1, between3, between5, betweenping, betweenping1 };

    explicit ComparisonFiles(Program& program)
    {
        for (const std::u32string_view name : {U"between.txt", U"between1.txt", U"between3.txt", U"between5.txt",
                                               U"betweenping.txt", U"betweenping1.txt"})
            files_.emplace_back(program, name);
    }
    ScratchFile& operator[](Name name) { return files_[name]; }

private:
    std::vector<ScratchFile> files_;
};

} // namespace tarvik
