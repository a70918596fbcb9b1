#include "mainwindow/scratch_file.h"

#include "platform/code_page.h"

namespace tarvik {

namespace {

constexpr std::size_t flush_at = 1 << 20;

} // namespace

template <typename Work>
void ScratchFile::guarded(Work&& work)
{
    if (failed_) return;
    try {
        work();
    } catch (const Failure& failure) {
        failed_ = true;
        file_.reset();
        if (!told_) tell(program_, failure.message());
    }
}

ScratchFile::ScratchFile(Program& program, TextView name, bool told)
    : program_(program), path_(installed(program, name)), told_(told)
{
    program_.form1.fso = true;
    guarded([this] {
        file_ = program_.platform.files.open_for_output(path_);
        file_->write(cleared_line);
        file_->close();
        file_.reset();
    });
}

void ScratchFile::open()
{
    guarded([this] { file_ = program_.platform.files.open_for_output(path_); });
}

void ScratchFile::write_line(TextView line)
{
    if (failed_) return;
    encode_to(line, bytes_);
    bytes_ += "\r\n";
    if (bytes_.size() < flush_at) return;
    guarded([this] { file_->write(bytes_); });
    bytes_.clear();
}

void ScratchFile::write_source(const LineSource& lines)
{
    Text line;
    for (std::size_t i = 0; i < lines.line_count() && !failed_; ++i) {
        line.clear();
        lines.append_line(i, line);
        write_line(line);
    }
}

void ScratchFile::close()
{
    guarded([this] {
        file_->write(bytes_);
        file_->close();
        file_.reset();
        program_.form1.textstream = true;
    });
    bytes_.clear();
}

} // namespace tarvik
