#include "tests/support/faulty_files.h"

#include "platform/failure.h"

namespace tarvik::test {

class FaultyFiles::Replacement final : public ReplacementFile {
public:
    Replacement(const FaultyFiles& files, std::unique_ptr<ReplacementFile> file) : files_(files), file_(std::move(file))
    {
    }
    void write(std::string_view bytes) override { files_.count(), file_->write(bytes); }
    void complete() override { files_.count(), file_->complete(); }
    void take_place() override { files_.count(), file_->take_place(); }

private:
    const FaultyFiles& files_;
    std::unique_ptr<ReplacementFile> file_;
};

class FaultyFiles::Output final : public OutputFile {
public:
    Output(const FaultyFiles& files, std::unique_ptr<OutputFile> file) : files_(files), file_(std::move(file)) {}
    void write(std::string_view bytes) override { file_->write(bytes); }
    void close() override { files_.count(), file_->close(); }

private:
    const FaultyFiles& files_;
    std::unique_ptr<OutputFile> file_;
};

void FaultyFiles::count() const
{
    if (++counted_ == failing_) throw Failure(U"磁盘已满。");
}

std::unique_ptr<ReplacementFile> FaultyFiles::begin_replacement(TextView path)
{
    count();
    return std::make_unique<Replacement>(*this, files_.begin_replacement(path));
}

std::unique_ptr<OutputFile> FaultyFiles::open_for_output(TextView path)
{
    count();
    return std::make_unique<Output>(*this, files_.open_for_output(path));
}

} // namespace tarvik::test
