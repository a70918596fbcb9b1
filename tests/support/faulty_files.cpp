#include "tests/support/faulty_files.h"

#include "platform/failure.h"

namespace tarvik::test {

class FaultyFiles::Replacement final : public ReplacementFile {
public:
    Replacement(const FaultyFiles& files, TextView path, std::unique_ptr<ReplacementFile> file)
        : files_(files), path_(path.str()), file_(std::move(file))
    {
    }
    void write(std::string_view bytes) override { files_.beginning(path_), file_->write(bytes); }
    void complete() override { files_.beginning(path_), file_->complete(); }
    void take_place() override { files_.beginning(path_), file_->take_place(); }

private:
    const FaultyFiles& files_;
    Text path_;
    std::unique_ptr<ReplacementFile> file_;
};

class FaultyFiles::Output final : public OutputFile {
public:
    Output(const FaultyFiles& files, TextView path, std::unique_ptr<OutputFile> file)
        : files_(files), path_(path.str()), file_(std::move(file))
    {
    }
    void write(std::string_view bytes) override { file_->write(bytes); }
    void close() override { files_.beginning(path_), file_->close(); }

private:
    const FaultyFiles& files_;
    Text path_;
    std::unique_ptr<OutputFile> file_;
};

void FaultyFiles::fail_at(std::size_t operation)
{
    trouble_at(operation, [](TextView) { throw Failure(U"磁盘已满。"); });
}

void FaultyFiles::beginning(TextView path) const
{
    if (++counted_ == troubled_) trouble_(path);
}

std::unique_ptr<ReplacementFile> FaultyFiles::begin_replacement(TextView path)
{
    return std::make_unique<Replacement>(*this, path, WatchedFiles::begin_replacement(path));
}

std::unique_ptr<OutputFile> FaultyFiles::open_for_output(TextView path)
{
    return std::make_unique<Output>(*this, path, WatchedFiles::open_for_output(path));
}

} // namespace tarvik::test
