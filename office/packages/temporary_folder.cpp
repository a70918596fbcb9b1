#include "office/packages/temporary_folder.h"

#include "platform/failure.h"

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
    throw Failure(U"无法建立临时文件夹“" + from_utf8(path_.string()) + U"”。");
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace tarvik::ooxml
