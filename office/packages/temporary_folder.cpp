#include "office/packages/temporary_folder.h"

#include "platform/failure.h"
#include "platform/path_text.h"

#include <random>
#include <string>
#include <system_error>

namespace tarvik::ooxml {

TemporaryFolder::TemporaryFolder()
{
    std::error_code error;
    const auto parent = std::filesystem::temp_directory_path(error);
    std::random_device random;
    constexpr int most_attempts = 100;
    for (int attempt = 0; !error && attempt < most_attempts; ++attempt) {
        path_ = parent / ("tarvik-" + std::to_string(random()));
        if (std::filesystem::create_directory(path_, error)) return;
    }
    throw Failure(U"无法建立临时文件夹“" + text_of(path_) + U"”。");
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void print_copy(Files& files, Printer& printer, TextView name, std::string_view bytes)
{
    const TemporaryFolder folder;
    const auto copy = folder.path() / path_of(name);
    const auto file = files.open_for_output(text_of(copy));
    file->write(bytes);
    file->close();
    printer.print(copy, name);
}

} // namespace tarvik::ooxml
