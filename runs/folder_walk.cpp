#include "runs/folder_walk.h"

#include "platform/files/paths.h"

namespace tarvik {

namespace {

constexpr std::size_t most_told = 10; // a box must fit the screen
constexpr std::u32string_view heading = U" 请注意：\r\n";

} // namespace

std::optional<PickedFile> pick_file(Program& program, TextView filter)
{
    const auto path = program.platform.dialogs.open_file(filter);
    if (!path || path->empty()) return std::nullopt;
    const PathParts parts = split_path(*path);
    return PickedFile{parts.folder.str(), parts.name.str()};
}

bool choose_source_folder(Program& program)
{
    Form1& form1 = program.form1;
    if (form1.folderchosen) return true;
    auto picked = pick_file(program, workbook_filter);
    if (!picked) return false;
    form1.sourcefolder = std::move(picked->folder);
    form1.folderchosen = true;
    return true;
}

std::vector<Text> walked_names(const Program& program, TextView folder)
{
    std::vector<Text> names = program.platform.files.file_names(folder);
    std::erase_if(names, [ended = false](const Text& name) mutable {
        ended = ended || name.find(U'$') != Text::npos;
        return ended;
    });
    return names;
}

bool is_same_folder(const Files& files, TextView one, TextView other)
{
    std::error_code error;
    return std::filesystem::equivalent(files.resolve(one), files.resolve(other), error);
}

std::vector<Text> work_on(const std::vector<Text>& names, const std::function<void(const Text& name)>& work)
{
    std::vector<Text> failures;
    for (const Text& name : names) {
        try {
            // A separator, which other systems allow in a name, would lead into another folder.
            if (!split_path(name).folder.empty()) throw Failure(U"“" + name + U"”的文件名含有“\\”，请改名后再试。");
            work(name);
        } catch (const Failure& failure) {
            failures.push_back(failure.message());
        }
    }
    return failures;
}

Text failures_text(const std::vector<Text>& failures)
{
    Text text = Text(heading) + U"有" + number_text(failures.size()) + U"个文件没有处理：";
    for (std::size_t i = 0; i < failures.size() && i < most_told; ++i) {
        const bool has_own_heading = failures[i].starts_with(heading);
        text += U"\r\n" + failures[i].substr(has_own_heading ? heading.size() : 0);
    }
    if (failures.size() > most_told) text += U"\r\n……";
    return text;
}

void tell_failures(Program& program, const std::vector<Text>& failures)
{
    if (!failures.empty()) tell(program, failures_text(failures));
}

void work_through(Program& program, const std::vector<Text>& names, const std::function<void(const Text& name)>& work)
{
    tell_failures(program, work_on(names, work));
}

} // namespace tarvik
