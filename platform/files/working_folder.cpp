#include "platform/files/working_folder.h"

#include "platform/failure.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/platform.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view list_name = ".handed-out";

using VersionsByName = std::map<std::string, std::string, std::less<>>;

bool is_folder(const fs::path& path) noexcept
{
    std::error_code error;
    return fs::is_directory(path, error);
}

/// Programs that lie among their files are not handed out, nor are libraries and what a run left there.
bool is_handed_out(const fs::path& name)
{
    const std::string text = utf8_of(name), extension = utf8_of(name.extension());
    return !text.starts_with("tarvik") && extension != ".exe" && extension != ".dll" && text != list_name &&
           !is_unfinished(utf8_of(name.filename()));
}

/// Their names below the folder, folders with "/" between, in the order of the bytes.
std::vector<std::string> files_below(const fs::path& folder)
{
    std::vector<std::string> names;
    naming_path(U"列出文件夹", text_of(folder), [&] {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            const fs::path name = entry.path().lexically_relative(folder);
            if (entry.is_regular_file() && is_handed_out(name))
                names.push_back(utf8_of(name.generic_string<fs::path::value_type>()));
        }
    });
    std::sort(names.begin(), names.end());
    return names;
}

/// A line for each file: the version that brought it, a tab, its name.
VersionsByName read_list(const fs::path& path)
{
    VersionsByName versions;
    std::error_code error;
    if (!fs::exists(path, error)) return versions;
    std::istringstream lines(naming_path(U"读取文件", text_of(path), [&] { return read_file(path); }));
    for (std::string line; std::getline(lines, line);)
        if (const auto tab = line.find('\t'); tab != std::string::npos)
            versions.emplace(line.substr(tab + 1), line.substr(0, tab));
    return versions;
}

void write_list(const fs::path& path, const VersionsByName& versions)
{
    std::string lines;
    for (const auto& [name, version] : versions) lines.append(version).append("\t").append(name).append("\n");
    naming_path(U"写入文件", text_of(path), [&] {
        ReplacementFile file(path, text_of(path));
        file.write(lines);
        file.take_place();
    });
}

/// A name that differs in case alone counts as there: the user's file would be passed over for the new one.
void hand_out(const fs::path& installed, const fs::path& own, const std::string& name)
{
    const fs::path target = look_up(own, from_utf8(name));
    std::error_code error;
    if (fs::exists(fs::symlink_status(target, error))) return;
    const fs::path original = installed / path_of_utf8(name);
    const std::string bytes = naming_path(U"读取文件", text_of(original), [&] { return read_file(original); });
    naming_path(U"写入文件", text_of(target), [&] {
        fs::create_directories(target.parent_path());
        ReplacementFile file(target, text_of(target));
        file.write(bytes);
        file.take_free_place();
    });
}

/// What the user keeps in it names customers: no other user of the computer looks into a folder that is made here.
void make_private_folders(const fs::path& path)
{
    if (path.empty() || is_folder(path)) return;
    make_private_folders(path.parent_path());
    if (fs::create_directory(path)) fs::permissions(path, fs::perms::owner_all);
}

void fill(const fs::path& own, const fs::path& installed, std::string_view version)
{
    VersionsByName versions = read_list(own / list_name);
    const std::size_t before = versions.size();
    for (const std::string& name : files_below(installed)) {
        if (versions.contains(name)) continue;
        hand_out(installed, own, name);
        versions.emplace(name, version);
    }
    if (versions.size() != before) write_list(own / list_name, versions);
}

/// Where the files lie that an installed program came with: share/tarvik/installation beside a program's folder that is
/// named bin, else the program's folder itself.
fs::path installed_files(const fs::path& program_folder)
{
    const fs::path shared = program_folder.parent_path() / "share/tarvik/installation";
    return program_folder.filename() == "bin" && is_folder(shared) ? shared : program_folder;
}

} // namespace

WorkingFolder open_working_folder(const fs::path& program_folder, const fs::path& data_folder, std::string_view version)
{
    const fs::path installed = installed_files(program_folder);
    if (installed == program_folder && may_write_in(installed)) return {installed, {}};
    const fs::path own = data_folder / "tarvik";
    try {
        naming_path(U"建立文件夹", text_of(own), [&] { make_private_folders(own); });
    } catch (const Failure& failure) {
        return {installed, failure.message() + U"程序暂时使用“" + text_of(installed) +
                               U"”中的文件，不能在其中保存。请解决后重新启动程序。"};
    }
    try {
        fill(own, installed, version);
        return {own, {}};
    } catch (const Failure& failure) {
        return {own,
                failure.message() + U"“" + text_of(own) + U"”中可能缺少文件。请解决后重新启动程序，缺少的会补上。"};
    }
}

WorkingFolder open_working_folder()
{
    return open_working_folder(program_file().parent_path(), user_data_folder(), version());
}

} // namespace tarvik
