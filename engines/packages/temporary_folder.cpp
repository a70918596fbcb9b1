#include "engines/packages/temporary_folder.h"

#include "platform/failure.h"
#include "platform/files/paths.h"

#include <random>
#include <string>
#include <system_error>

namespace tarvik::ooxml {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view beginning = "tarvik-";
constexpr const char* lock_name = "in-use";

bool is_name_of_ours(std::string_view name)
{
    return name.size() > beginning.size() && name.starts_with(beginning) &&
           name.find_first_not_of("0123456789", beginning.size()) == std::string_view::npos;
}

// One that was killed ahead of its lock leaves an empty folder; what else has none stays.
void remove_if_dead(const fs::path& folder)
{
    if (!is_name_of_ours(utf8_of(folder.filename())) || !fs::is_directory(fs::symlink_status(folder))) return;
    if (fs::exists(folder / lock_name)) {
        if (is_left_behind(folder / lock_name)) fs::remove_all(folder);
    } else if (!is_just_made(status_of(folder))) {
        fs::remove(folder);
    }
}

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::error_code error;
    const fs::path parent = fs::temp_directory_path(error);
    if (!error) for_each_entry(parent, remove_if_dead);
    std::random_device random;
    constexpr int most_attempts = 100;
    for (int attempt = 0; !error && attempt < most_attempts; ++attempt) {
        path_ = parent / (std::string(beginning) + std::to_string(random()));
        if (!fs::create_directory(path_, error)) continue;
        fs::permissions(path_, fs::perms::owner_all, error);
        try {
            lock_.emplace(path_ / lock_name, Opening::New);
            return;
        } catch (const std::system_error& failed) {
            error = failed.code();
            std::error_code ignored;
            fs::remove(path_, ignored);
        }
    }
    throw Failure(U"无法建立临时文件夹“" + text_of(path_) + U"”。");
}

TemporaryFolder::~TemporaryFolder()
{
    lock_.reset();
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void print_copy(Files& files, Printer& printer, TextView name, std::string_view bytes)
{
    const TemporaryFolder folder;
    const auto copy = folder.path() / path_of(name);
    files.replace(text_of(copy), bytes);
    printer.print(copy, name);
}

} // namespace tarvik::ooxml
