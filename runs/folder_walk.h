#pragma once

#include "mainwindow/mainwindow.h"

#include <functional>

/// Work on the files of a folder that the user picks by one of them.
namespace tarvik {

inline constexpr std::u32string_view workbook_filter = U"excel2010文件*.xlsx|*.xlsx|excel2007文件*.xls|*.xls";
inline constexpr std::u32string_view any_file_filter = U"所有文件*.*|*.*";

struct PickedFile {
    Text folder; ///< with its closing separator
    Text name;
};

/// Asks for a file. Nothing when the user cancels.
std::optional<PickedFile> pick_file(Program& program, TextView filter);

/// The folder of spreadsheets that live comparisons work on: asks for one of its files unless a folder is chosen
/// already. False when the user cancels.
bool choose_source_folder(Program& program);

/// The names of a folder's files in their order, up to the first that holds "$".
std::vector<Text> walked_names(const Program& program, TextView folder);

/// Whether both paths lead to one folder; false where one of them is not there.
bool is_same_folder(const Files& files, TextView one, TextView other);

/// Works on each of these files in turn. One that fails, or whose name holds a separator, is passed
/// over; gives what failed, and why.
std::vector<Text> work_on(const std::vector<Text>& names, const std::function<void(const Text& name)>& work);
/// One message about all these failures; at least one.
Text failures_text(const std::vector<Text>& failures);
/// Reports all failures in one message; nothing when there are none.
void tell_failures(Program& program, const std::vector<Text>& failures);
/// Both: what failed is reported when the other files are done.
void work_through(Program& program, const std::vector<Text>& names, const std::function<void(const Text& name)>& work);

} // namespace tarvik
