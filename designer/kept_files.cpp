#include "designer/designer.h"

#include "columns/columns.h"
#include "designer/design/design.h"
#include "platform/text/code_page.h"
#include "runs/batch_runner.h"
#include "runs/folder_walk.h"
#include "runs/sheets.h"

#include <set>
#include <unordered_map>

namespace tarvik {

namespace {

constexpr int column_box = 5; // of Form3

/// For each value the names that hold it, as their places in the list. Each name is looked through once for each length
/// that values have.
std::unordered_map<Text, std::vector<std::size_t>> holders_of(const std::vector<Text>& values,
                                                              const std::vector<Text>& names)
{
    std::unordered_map<Text, std::vector<std::size_t>> holders;
    std::set<std::size_t> lengths;
    for (const Text& value : values)
        if (holders.try_emplace(value).second) lengths.insert(value.size());
    for (std::size_t place = 0; place < names.size(); ++place) {
        const Text name = lower(names[place]);
        for (const std::size_t length : lengths)
            for (std::size_t start = 0; start + length <= name.size(); ++start) {
                const auto value = holders.find(name.substr(start, length));
                if (value == holders.end()) continue;
                if (value->second.empty() || value->second.back() != place) value->second.push_back(place);
            }
    }
    return holders;
}

std::vector<Text> column_values(const Program& program, int column)
{
    std::vector<Text> values;
    for (int row = 0; row < program.form1.rowcount; ++row)
        if (const TextView value = own_element(program, row, column); !value.empty()) values.push_back(value.str());
    return values;
}

/// Moves the files, lists the values that found none and says how many there were; gives the failures.
std::vector<Text> keep_files(Program& program, const Text& folder, const std::vector<Text>& values,
                             ReplacementFile& list)
{
    const std::vector<Text> names = walked_names(program, folder);
    const auto holders = holders_of(values, names);
    const Text& outfolder = program.form1.outfolder;
    const bool stay = is_same_folder(program.platform.files, folder, outfolder);
    std::vector<bool> gone(names.size());
    std::vector<Text> failures;
    std::size_t moved = 0, without_file = 0;
    for (const Text& value : values) {
        std::vector<Text> found;
        for (const std::size_t place : holders.at(value)) {
            if (!gone[place]) found.push_back(names[place]);
            gone[place] = !stay;
        }
        if (found.empty()) {
            list.write(encode(value + U"\r\n"));
            ++without_file;
        }
        if (stay) continue;
        const auto failed =
            work_on(found, [&](const Text& name) { move_into_folder(program, folder + name, outfolder, name); });
        failures.insert(failures.end(), failed.begin(), failed.end());
        moved += found.size() - failed.size();
    }
    program.notice = U"移出了 " + number_text(moved) + U" 个文件到 " + outfolder + U"；" + number_text(without_file) +
                     U" 个值没有文件，列在那里的 nofile.txt 中";
    return failures;
}

void excelbijiaop88(Program& program)
{
    Form1& form1 = program.form1;
    const auto list = program.platform.files.begin_replacement(form1.outfolder + U"nofile.txt");
    const auto picked = pick_file(program, any_file_filter);
    if (!picked) return list->take_place();
    const auto column = static_cast<int>(box_column(program, column_box));
    const auto failures = keep_files(program, picked->folder, column_values(program, column), *list);
    list->take_place();
    tell_failures(program, failures);
    show_caption(program, form1.runtitle + U" " + U"   Complete" + U" " + run_time(program) + U"→：" + U" OK !");
}

} // namespace

constexpr ReportCommand keptfile_command{
    .text = U"An keptfile",
    .notice =
        U"它可以通过打开所有文件，是否包含有源数据表中某列的数组元素，相当于在某个文件夹中同时建立了多个搜索条件！",
    .title_first = true,
    .key = U"\r",
    .count_goes_to = &Form1::rowcount,
    .run = excelbijiaop88,
};

} // namespace tarvik
