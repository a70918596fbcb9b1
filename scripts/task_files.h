#pragma once

#include "platform/platform.h"

#include <string>
#include <vector>

/// Tasks: recorded scripts, kept as plain text in a folder of the installation folder. Every operation throws Failure.
namespace tarvik {

inline constexpr std::u32string_view task_folder = U"任务";

/// The path of a task, as `Files` has it.
Text task_path(TextView name);
/// In the order of their upper-cased names.
std::vector<Text> task_names(const Files& files);
/// Writes a new task with a comment at its head. One that is there already is a Failure.
void keep_task(const Platform& platform, TextView name, const std::vector<std::string>& lines);
void rename_task(Files& files, TextView name, TextView new_name);

/// A text in a task that can be asked for each time: a file, what was answered, or what a box is set to.
struct ChangeableText {
    std::size_t line; ///< from 0
    Text shown;       ///< the line as the script has it
};
std::vector<ChangeableText> changeable_texts(std::string_view script);
/// The script with a hole of that name in the place of the text, which is its preset. A name that the script asks for
/// already, or that cannot stand there, is a Failure.
std::string with_hole(std::string_view script, std::size_t line, TextView name);

/// What runs a task each night at two, ready to paste.
struct NightLine {
    Text timetable; ///< the system's timetable that keeps it, and where the line is pasted
    Text line;
};
/// One for each timetable that the system may have.
std::vector<NightLine> night_lines(const std::filesystem::path& player, TextView name);

} // namespace tarvik
