#include "tests/support/test_program.h"

#include "platform/files/disk_file.h"
#include "platform/files/paths.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>

namespace tarvik::test {

namespace fs = std::filesystem;

namespace {

fs::path& root()
{
    static fs::path folder = fs::temp_directory_path();
    return folder;
}

} // namespace

void TemporaryFolder::keep_in_memory()
{
    constexpr bool is_posix = fs::path::preferred_separator == '/'; // wine shows the folder, too
    if (is_posix && fs::is_directory("/dev/shm")) root() = "/dev/shm";
}

TemporaryFolder::TemporaryFolder()
{
    static std::atomic<int> made{0};
    path_ = root() / ("tarvik-test-" + std::to_string(process_number()) + "-" + std::to_string(++made));
    fs::remove_all(path_);
    fs::create_directories(path_);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void TemporaryFolder::write(const std::string& name, std::string_view bytes) const
{
    std::ofstream file(path_ / path_of_utf8(name), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.good()) << name;
}

std::string TemporaryFolder::read(const std::string& name) const
{
    std::ifstream file(path_ / path_of_utf8(name), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

void FaultyFiles::fail_at(std::size_t operation)
{
    trouble_at(operation, [](TextView) { throw Failure(U"磁盘已满。"); });
}

void FaultyFiles::beginning(TextView path)
{
    if (++counted_ == troubled_) trouble_(path);
}

Answer RecordedDialogs::message(const Message& message)
{
    messages.push_back(message);
    if (message.buttons == Buttons::OK) return Answer::OK;
    if (replies.empty()) {
        ADD_FAILURE() << "a question without an answer: " << to_utf8(message.text);
        return message.buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
    }
    const Answer answer = replies.front();
    replies.pop_front();
    return answer;
}

Text RecordedDialogs::input(TextView, TextView prompt, TextView)
{
    if (inputs.empty()) {
        ADD_FAILURE() << "an input box without an answer: " << to_utf8(prompt);
        return {};
    }
    Text answer = inputs.front();
    inputs.pop_front();
    return answer;
}

std::optional<Text> RecordedDialogs::next_file(TextView filter)
{
    filters.push_back(filter.str());
    if (files.empty()) return std::nullopt;
    auto answer = files.front();
    files.pop_front();
    return answer;
}

std::vector<std::string> RecordedDialogs::take_messages()
{
    std::vector<std::string> told;
    for (const Message& message : messages) told.push_back(to_utf8(message.title) + "|" + to_utf8(message.text));
    messages.clear();
    return told;
}

void RecordedPrinter::print(const std::filesystem::path& file, TextView name)
{
    std::ifstream stream(file, std::ios::binary);
    printed.push_back(name.str());
    files.emplace_back(file, std::string(std::istreambuf_iterator<char>(stream), {}));
}

TestProgram::TestProgram(OfficeEngines* office)
    : files(installation.path(), {{'d', drive_d.path()}}),
      program({dialogs, clipboard, clock, watched, screen, printer}, office ? *office : no_office)
{
    Form_Load(program);
}

void TestProgram::open_text(TextView text)
{
    program.form1.RichTextBox2.set_content(PaneText(text));
}

} // namespace tarvik::test
