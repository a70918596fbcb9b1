#include "mainwindow/scratch_file.h"

#include <algorithm>
#include <future>

namespace tarvik {

namespace {

/// Lines that are rendered while those before them are on their way to the file.
constexpr std::size_t lines_at_once = 4096;

} // namespace

template <typename Work>
void ScratchFile::guarded(Work&& work)
{
    if (failed_) return;
    try {
        work();
    } catch (const Failure& failure) {
        failed_ = true;
        if (!told_) tell(program_, failure.message());
    }
}

ScratchFile::ScratchFile(Program& program, TextView name, bool told)
    : program_(program), path_(installed(program, name)), told_(told)
{
    program_.form1.fso = true;
    guarded([this] {
        const auto file = program_.platform.files.open_for_output(path_);
        file->write(cleared_line);
        file->close();
    });
}

void ScratchFile::write(const LineSource& lines)
{
    guarded([&] { write_all(lines); });
    program_.platform.screen.progress(0, 0);
}

void ScratchFile::write_all(const LineSource& lines)
{
    const auto file = program_.platform.files.open_for_output(path_);
    std::string rendered, leaving;
    std::future<void> left;
    const std::size_t count = lines.line_count();
    for (std::size_t line = 0; line < count; line += lines_at_once) {
        rendered.clear();
        lines.append_encoded(line, std::min(line + lines_at_once, count), rendered);
        if (left.valid()) left.get();
        rendered.swap(leaving);
        left = std::async(std::launch::async, [&file, &leaving] { file->write(leaving); });
        program_.platform.screen.progress(line, count);
    }
    if (left.valid()) left.get();
    file->close();
    program_.form1.textstream = true;
}

} // namespace tarvik
