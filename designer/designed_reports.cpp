#include "designer/designer.h"

#include "designer/design/design.h"
#include "mainwindow/installation_files.h"
#include "runs/folder_walk.h"
#include "runs/keyed_scans.h"
#include "runs/sheets.h"

/// The reports that a design fills from a key's rows: copies of a template, and of files that are there already.
namespace tarvik {

namespace {

void fill_copy(Program& program, const Text& file, const Text& name)
{
    SpreadsheetTask task(program, file);
    transfer(program, task.sheet());
    task.save_as(plain_sheet_path(program, name));
    task.finish(Changes::Save);
}

constexpr std::u32string_view either_command = U"An testsesame";
constexpr std::u32string_view command_a = U"An testsesame A";
constexpr std::u32string_view command_b = U"An testsesame B";

// The box may have been edited since the start: what it still names goes, else the template of the start.
std::u32string_view template_in_use(const Program& program, TextView box)
{
    if (box.contains(command_b)) return files::designed_b;
    if (box.contains(command_a)) return files::designed_a;
    return program.run.template_file;
}

// An extension is always there, so that a key that ends in one of its own does not choose the format.
Text report_name(const Text& key)
{
    const Text name = upper(key);
    return name.ends_with(U".XLSX") ? name : name + U".xlsx";
}

void excecopy8(Program& program)
{
    Form1& form1 = program.form1;
    const Text& box = form1.query_box().text();
    if (!(form1.partcount > 0) || !key_gets_sheet(program, either_command)) return;
    fill_copy(program, installed(program, template_in_use(program, box)), report_name(run_key(program)));
    close_sheet(program);
}

constexpr ReportCommand row_of(std::u32string_view text, std::u32string_view notice, std::u32string_view design,
                               std::u32string_view template_file)
{
    return {
        .text = text,
        .notice = notice,
        .question = excel_question,
        .report = U"3159",
        .question_tail = U"。",
        .design = design,
        .count_goes_to = &Form1::rowcount,
        .key_column = design_column,
        .template_file = template_file,
        .sheets = {.timer = &Form1::Timer7,
                   .scan = count_in_report<files::report_3159>,
                   .prepare = take_key_rows,
                   .sheet = excecopy8},
    };
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
    const std::vector<Text> failures = work_on(names_with_key(program), [&program](const Text& name) {
        fill_copy(program, program.form1.sourcefolder + name, U"OK-" + name);
    });
    if (running) program.run.failures.insert(program.run.failures.end(), failures.begin(), failures.end());
    else tell_failures(program, failures);
    if (run_key(program).empty()) program.notice = U"没有更新文件：此时没有关键字；An tomation 逐个关键字更新";
    close_sheet(program);
}

} // namespace

constexpr ReportCommand template_command_a = row_of(command_a,
                                                    U"An testsesame A可以读取保存在{folder}\\automation.bin的参数信息，"
                                                    U"按照{folder}/designerA.xlsx设计模板，报表自动化！",
                                                    files::design_a, files::designed_a);

constexpr ReportCommand template_command_b =
    row_of(command_b,
           U"An testsesame B可以读取保存在{folder}\\automation2.bin的参数信息，"
           U"按照{folder}/designerB.xlsx设计模板，报表自动化！",
           files::design_b, files::designed_b);

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
