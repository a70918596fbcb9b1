#include "designer/designer.h"

#include "designer/design/design.h"
#include "mainwindow/installation_files.h"
#include "runs/folder_walk.h"
#include "runs/keyed_scans.h"
#include "runs/sheets.h"

namespace tarvik {

namespace {

void fill_copy(Program& program, const Text& name)
{
    SpreadsheetTask task(program, program.form1.sourcefolder + name);
    transfer(program, task.sheet());
    task.save_as(plain_sheet_path(program, U"OK-" + name));
    task.finish(Changes::Save);
}

// The files that the key takes. Without rows there is nothing to fill in.
std::vector<Text> names_with_key(const Program& program)
{
    const Text key = run_key(program);
    if (key.empty() || !(program.form1.rowcount > 0)) return {};
    std::vector<Text> names = walked_names(program, program.form1.sourcefolder);
    std::erase_if(names, [&key](const Text& name) { return lower(name).find(key) == Text::npos; });
    return names;
}

void excelbijiaopt(Program& program)
{
    const bool running = run_in_progress(program.form1);
    if (!choose_source_folder(program)) {
        if (running) stop_run(program);
        return;
    }
    const std::vector<Text> failures =
        work_on(names_with_key(program), [&program](const Text& name) { fill_copy(program, name); });
    if (running) program.run.failures.insert(program.run.failures.end(), failures.begin(), failures.end());
    else tell_failures(program, failures);
    if (run_key(program).empty()) program.notice = U"没有更新文件：此时没有关键字；An tomation 逐个关键字更新";
    close_sheet(program);
}

} // namespace

constexpr ReportCommand tomation_command{
    .text = U"An tomation",
    .prepare = [](Program& program) { program.form1.folderchosen = false; },
    .notice = U"An tomation 可以读取保存在{folder}\\automation3.bin的参数信息，"
              U"通过依次打开多个或单个excel文件，实时对照更新，完善测试报表分析设计。",
    .question = excel_question,
    .report = U"3160",
    .question_tail = U"在此目录下.",
    .design = files::design_live,
    .count_goes_to = &Form1::rowcount,
    .key_column = design_column,
    .sheets = {.timer = &Form1::Timer8,
               .scan = count_in_report<files::report_3160>,
               .prepare = take_key_rows,
               .sheet = excelbijiaopt,
               .finished =
                   [](Program& program) {
                       program.form1.folderchosen = false;
                       tell_failures(program, program.run.failures);
                   }},
};

constexpr ReportCommand sesame_open_command{
    .text = U"An Sesame Open",
    .notice = U"An Sesame Open 可以读取保存在{folder}\\automation2.bin的参数信息，"
              U"通过依次打开多个或者单个excel文件，批量更新！",
    .design = files::design_b,
    .title_first = true,
    .count_goes_to = &Form1::rowcount,
    .run = excelbijiaopt,
};

} // namespace tarvik
