#include "designer/designer.h"

#include "designer/design/design.h"
#include "mainwindow/installation_files.h"
#include "runs/keyed_scans.h"
#include "runs/sheets.h"

namespace tarvik {

namespace {

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
    SpreadsheetTask task(program, installed(program, template_in_use(program, box)));
    transfer(program, task.sheet());
    task.save_as(plain_sheet_path(program, report_name(run_key(program))));
    task.finish(Changes::Save);
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

} // namespace tarvik
