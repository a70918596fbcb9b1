#include "scripts/task_files.h"

#include "platform/failure.h"
#include "platform/files/paths.h"
#include "scripts/script.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace tarvik {

namespace {

constexpr std::u32string_view ending = U".play";

std::vector<std::string> lines_of(std::string_view script)
{
    std::vector<std::string> lines;
    std::istringstream text{std::string(script)};
    for (std::string line; std::getline(text, line);) lines.push_back(std::move(line));
    return lines;
}

// The place of the last word in the line where that is a quoted text that can change; npos elsewhere.
std::size_t text_place(const std::string& line)
{
    const std::vector<Word> words = split_line(line);
    constexpr std::array<std::u32string_view, 3> changeable{U"file", U"input", U"set"};
    if (words.empty() || std::ranges::find(changeable, words.front().text) == changeable.end())
        return std::string::npos;
    const std::string text = quoted_word(words.back().text);
    return words.back().quoted && line.ends_with(text) ? line.size() - text.size() : std::string::npos;
}

Failure taken(TextView name)
{
    return Failure(U"已有名为“" + name + U"”的任务，没有覆盖。");
}

void check_free(const Files& files, TextView name)
{
    if (name.empty() || safe_file_name(name) != name) throw Failure(U"这个名字不能用作任务名：" + name);
    if (files.file_exists(task_path(name))) throw taken(name);
}

// The name stands in curly brackets in a quoted word, and ahead of "=" where its value is set. Of two askings of one
// name the later would be the answer to both.
void check_hole(std::string_view script, TextView name)
{
    const bool is_task_hole = std::ranges::any_of(task_holes, [name](TextView hole) { return hole == name; });
    if (is_task_hole || name.str().find_first_of(U"\"\\{}=") != Text::npos)
        throw Failure(U"这个名字不能用作询问的名称：" + name);
    if (script.find("{" + to_utf8(name) + "}") != std::string_view::npos)
        throw Failure(U"这个任务已经询问“" + name + U"”，请用别的名称。");
}

} // namespace

Text task_path(TextView name)
{
    return Text(task_folder) + U"\\" + name + Text(ending);
}

std::vector<Text> task_names(const Files& files)
{
    std::vector<Text> names;
    if (!files.folder_exists(task_folder)) return names;
    for (const Text& file : files.file_names(task_folder))
        if (file.ends_with(ending)) names.push_back(file.substr(0, file.size() - ending.size()));
    return names;
}

void keep_task(const Platform& platform, TextView name, const std::vector<std::string>& lines)
{
    check_free(platform.files, name);
    if (!platform.files.folder_exists(task_folder)) platform.files.create_folder(task_folder);
    const CalendarTime now = platform.clock.now();
    std::string script = "# " + to_utf8(name) + "\n# " + to_utf8(date_text(now) + U" " + time_of_day(now)) + " 录制\n";
    script += "# tarvik-play " + quoted_word(name) + "\n";
    for (const std::string& line : lines) script += line + "\n";
    platform.files.replace(task_path(name), script);
}

void rename_task(Files& files, TextView name, TextView new_name)
{
    check_free(files, new_name);
    if (!files.move_file(task_path(name), task_path(new_name))) throw taken(new_name);
}

std::vector<ChangeableText> changeable_texts(std::string_view script)
{
    std::vector<ChangeableText> texts;
    const std::vector<std::string> lines = lines_of(script);
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (text_place(lines[i]) != std::string::npos) texts.push_back({i, from_utf8(lines[i])});
    return texts;
}

std::string with_hole(std::string_view script, std::size_t changed, TextView name)
{
    check_hole(script, name);
    std::vector<std::string> lines = lines_of(script);
    std::string& line = lines.at(changed);
    const std::size_t place = text_place(line);
    const std::string asked =
        "ask " + quoted_word(name) + " " + line.substr(place) + (line.starts_with("file") ? " file" : "");
    line.replace(place, std::string::npos, "\"{" + to_utf8(name) + "}\"");
    const auto head = std::ranges::find(lines, "task");
    lines.insert(head == lines.end() ? lines.begin() : std::next(head), asked);
    std::string result;
    for (const std::string& each : lines) result += each + "\n";
    return result;
}

} // namespace tarvik
