#include "mainwindow/scratch_file.h"

#include "platform/background.h"

#include <utility>

namespace tarvik {

namespace {

constexpr std::size_t most_bytes = std::size_t{1} << 30;
/// Bytes that are rendered while those before them are on their way to the file.
constexpr std::size_t bytes_at_once = std::size_t{1} << 20;

} // namespace

template <typename Work>
void ScratchFile::guarded(Work&& work)
{
    if (failed_) return;
    try {
        work();
    } catch (const Failure& failure) {
        failed_ = true;
        failure_ = failure.message();
    }
}

ScratchFile::ScratchFile(Program& program, TextView name) : program_(program), path_(installed(program, name))
{
    guarded([this] { clear(); });
    tell_failure();
}

void ScratchFile::clear()
{
    const auto file = program_.platform.files.open_for_output(path_);
    file->write("\r\r\n"); // CR, then the line end
    file->close();
}

void ScratchFile::write(const LineSource& lines)
{
    write_silently(lines);
    tell_failure();
}

void ScratchFile::write_silently(const LineSource& lines)
{
    guarded([&] { write_all(lines); });
    program_.platform.screen.progress(0, 0);
}

void ScratchFile::tell_failure()
{
    if (!failure_) return;
    const Text message = *std::exchange(failure_, std::nullopt);
    Text reason = message; // as it would be reported of another file
    if (const auto place = reason.find(path_); place != Text::npos) reason.erase(place, path_.size());
    if (program_.scratch_failures.insert(reason).second) tell(program_, message);
}

void ScratchFile::write_all(const LineSource& lines)
{
    const auto file = program_.platform.files.open_for_output(path_);
    std::string rendered, leaving;
    std::future<void> left;
    const std::size_t count = lines.line_count();
    std::size_t written = 0;
    for (std::size_t line = 0; line < count;) {
        rendered.clear();
        line = lines.append_encoded(line, bytes_at_once, rendered);
        written += rendered.size();
        if (left.valid()) left.get();
        if (written > most_bytes) break;
        rendered.swap(leaving);
        left = in_background([&file, &leaving] { file->write(leaving); }, line < count);
        program_.platform.screen.progress(line, count);
    }
    if (left.valid()) left.get();
    file->close();
    if (written > most_bytes) {
        clear();
        throw Failure(U"视图超过 1 GB，没有写入文件“" + path_ + U"”。");
    }
}

} // namespace tarvik
