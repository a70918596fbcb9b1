#include "platform/files/files.h"

#include "platform/failure.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <utility>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

char drive_letter(TextView path) noexcept
{
    if (path.size() < 2 || path[1] != U':') return '\0';
    const char32_t letter = lower(path[0]);
    return letter >= U'a' && letter <= U'z' ? static_cast<char>(letter) : '\0';
}

fs::path without_closing_separator(const fs::path& path)
{
    const fs::path normal = full_path(path);
    return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

} // namespace

Text path_in(TextView folder, TextView name)
{
    const bool closed = folder.empty() || is_separator(folder[folder.size() - 1]);
    return closed ? folder.str() + name : folder.str() + U"\\" + name;
}

Files::Files(const fs::path& installation, const DriveMap& drives)
    : installation_(without_closing_separator(installation)), installation_text_(text_of(installation_))
{
    for (const auto& [letter, folder] : drives)
        drives_[static_cast<char>(std::tolower(static_cast<unsigned char>(letter)))] = folder;
}

Files::Files(const Files& files, FileWatcher& watcher) : Files(files)
{
    watchers_.insert(watchers_.begin(), &watcher);
}

template <typename... Values>
void Files::announce(void (FileWatcher::*event)(Values...), Values... values) const
{
    for (FileWatcher* watcher : watchers_) (watcher->*event)(values...);
}

/// Does work of which the watchers hear beforehand; what the system fails in names the path.
template <typename Work>
auto Files::accessed(TextView action, TextView path, const Work& work) const
{
    announce(&FileWatcher::beginning, path);
    return naming_path(action, path, work);
}

std::function<void()> Files::announcing(TextView path) const
{
    return [this, shown = path.str()] { announce(&FileWatcher::beginning, TextView(shown)); };
}

fs::path Files::resolve(TextView path) const
{
    if (path.find(U'\0') != npos) throw file_failure(U"使用", path, EINVAL);
    if (const char letter = drive_letter(path); letter != '\0') {
        const auto drive = drives_.find(letter);
        return look_up(drive != drives_.end() ? drive->second : drive_folder(letter), path.substr(2));
    }
    if (path.empty() || !is_separator(path[0])) return look_up(installation_, path);
    // Most of them: the program put these together itself, and their folder needs no look.
    if (path.starts_with(installation_text_) && path.substr(installation_text_.size()).starts_with(U"\\"))
        return look_up(installation_, path.substr(installation_text_.size()));
    return rooted_path(path);
}

bool Files::file_exists(TextView path) const
{
    announce(&FileWatcher::looking);
    std::error_code error;
    return path.find(U'\0') == npos && fs::is_regular_file(resolve(path), error);
}

bool Files::folder_exists(TextView path) const
{
    announce(&FileWatcher::looking);
    std::error_code error;
    return path.find(U'\0') == npos && fs::is_directory(resolve(path), error);
}

FileStamp Files::stamp(TextView path) const
{
    return accessed(U"查看文件", path, [&] { return stamp_of(resolve(path)); });
}

std::string Files::read(TextView path) const
{
    std::string bytes = accessed(U"读取文件", path, [&] { return read_file(resolve(path)); });
    announce(&FileWatcher::stream_stands);
    return bytes;
}

ByteSource Files::open_for_input(TextView path) const
{
    auto file = accessed(U"读取文件", path, [&] { return open_for_reading(resolve(path)); });
    announce(&FileWatcher::stream_stands);
    return [file = std::move(file), shown = path.str()](std::span<char> target) {
        return naming_path(U"读取文件", shown, [&] { return file->read(target); });
    };
}

void Files::replace(TextView path, std::string_view bytes)
{
    const auto file = new_replacement(path);
    file->write(bytes);
    file->take_place();
    announce(&FileWatcher::stream_stands);
}

std::unique_ptr<ReplacementFile> Files::begin_replacement(TextView path)
{
    auto file = new_replacement(path);
    announce(&FileWatcher::stream_stands);
    return file;
}

std::unique_ptr<ReplacementFile> Files::new_replacement(TextView path)
{
    auto file = accessed(U"写入文件", path,
                         [&] { return std::make_unique<ReplacementFile>(resolve(path), path, announcing(path)); });
    sweep(file->folder());
    return file;
}

void Files::sweep(const fs::path& folder)
{
    if (swept_.insert(folder.native()).second) remove_leftovers(folder);
}

std::unique_ptr<OutputFile> Files::open_for_output(TextView path)
{
    auto file = accessed(U"写入文件", path,
                         [&] { return std::make_unique<OutputFile>(resolve(path), path, announcing(path)); });
    announce(&FileWatcher::stream_stands);
    return file;
}

void Files::append(TextView path, std::string_view bytes)
{
    accessed(U"写入文件", path, [&] { append_to_file(resolve(path), bytes); });
    announce(&FileWatcher::stream_stands);
}

void Files::create_folder(TextView path)
{
    accessed(U"建立文件夹", path, [&] { make_folder(resolve(path)); });
}

bool Files::move_file(TextView from, TextView to)
{
    return accessed(U"移动文件", from, [&] {
        const fs::path target = resolve(to);
        sweep(target.parent_path());
        return move_disk_file(resolve(from), target);
    });
}

std::vector<Text> Files::file_names(TextView folder) const
{
    std::vector<std::pair<Text, Text>> found; // upper-cased, as it is
    accessed(U"列出文件夹", folder, [&] {
        for (const auto& entry : fs::directory_iterator(resolve(folder))) {
            std::error_code error;
            if (!entry.is_regular_file(error) || is_unfinished(utf8_of(entry.path().filename()))) continue;
            Text name = text_of(entry.path().filename());
            found.emplace_back(upper(name), std::move(name));
        }
    });
    std::sort(found.begin(), found.end());
    std::vector<Text> names;
    names.reserve(found.size());
    for (auto& [key, name] : found) names.push_back(std::move(name));
    return names;
}

} // namespace tarvik
