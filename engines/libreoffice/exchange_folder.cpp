#include "engines/libreoffice/exchange_folder.h"

#include "engines/packages/damage.h"
#include "platform/files/disk_file.h"
#include "platform/files/file_failure.h"

#include <atomic>
#include <system_error>

namespace tarvik::libreoffice {

namespace fs = std::filesystem;

namespace {

template <typename Work>
auto with_reason(const Work& work)
{
    try {
        return work();
    } catch (const std::system_error& error) {
        throw ooxml::Damage(U"临时文件无法读写（" + reason_of(error) + U"）。");
    }
}

} // namespace

ExchangeFolder::ExchangeFolder(const fs::path& parent)
{
    static std::atomic<unsigned> made{0};
    path_ = parent / std::to_string(++made);
    with_reason([&] { fs::create_directories(path_); });
}

ExchangeFolder::~ExchangeFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path ExchangeFolder::put(const fs::path& name, std::string_view bytes) const
{
    auto file = place(name);
    with_reason([&] { append_to_file(file, bytes); });
    return file;
}

std::string ExchangeFolder::take(const fs::path& name) const
{
    return with_reason([&] { return read_file(place(name)); });
}

} // namespace tarvik::libreoffice
