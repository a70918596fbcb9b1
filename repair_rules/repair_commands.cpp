#include "repair_rules/repair_commands.h"

#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"
#include "repair_rules/rules.h"
#include "repair_rules/sheets.h"
#include "runs/batch_runner.h"
#include "runs/folder_walk.h"
#include "runs/sheets.h"

#include <cmath>

namespace tarvik {

namespace {

using repair_rules::Records;

constexpr std::u32string_view saved_mark = U"A";

Text rate(const Program& program)
{
    return number_text(std::floor(seconds_elapsed(program) / (program.form1.filecount + 1))) + U" 秒/张。";
}

/// Brings the records into a sheet; gives whether one of its lines has met a record.
using Operation = std::function<bool(Worksheet& sheet, const Records& records)>;

repair_rules::RuleTable department_rules(const Program& program)
{
    const Files& files = program.platform.files;
    const Text path = installed(program, files::repair_rules);
    if (!files.file_exists(path)) return repair_rules::read_rules(repair_rules::built_in_rules());
    const Document table = recognise_foreign(files.read(path)).document;
    return repair_rules::read_rules(table.text());
}

void enter_in_file(Program& program, const Operation& enter, const Records& records, const PickedFile& file)
{
    Form1& form1 = program.form1;
    SpreadsheetTask task(program, file.folder + file.name);
    form1.founddata = false;
    form1.founddata = enter(task.sheet(), records);
    if (form1.founddata) task.save_as(plain_sheet_path(program, Text(saved_mark) + file.name));
    task.finish(Changes::Save);
    form1.filecount += 1;
    show_caption(program, form1.runtitle + U" " + number_text(form1.filecount + 1) + U" →" + run_time(program) +
                              U"→：" + rate(program));
}

void enter_in_folder(Program& program, std::size_t number_field, const Operation& enter)
{
    Form1& form1 = program.form1;
    if (form1.rowcount <= 0)
        throw Failure(U" 请注意：\r\n打开的报表中没有维修记录，各表没有改动；请先打开维修记录，再重新输入命令。");
    const auto picked = pick_file(program, workbook_filter);
    if (!picked) return;
    form1.filecount = 0;
    const Records records(program.module1.suf, static_cast<std::size_t>(form1.rowcount), number_field);
    work_through(program, walked_names(program, picked->folder), [&](const Text& name) {
        enter_in_file(program, enter, records, {picked->folder, name});
    });
    show_caption(program, form1.runtitle + U" " + U"   Complete" + U" " + run_time(program) + U"→：" +
                              number_text(seconds_elapsed(program)) + U" 秒。" + U"→：" + rate(program) + U" OK !");
}

} // namespace

void excelbijiaok(Program& program)
{
    const auto enter = [rules = department_rules(program)](Worksheet& sheet, const Records& records) {
        return repair_rules::enter_orders(sheet, records, rules);
    };
    enter_in_folder(program, repair_rules::order_number_field, enter);
}

void excelbijiaop(Program& program)
{
    enter_in_folder(program, repair_rules::price_number_field, repair_rules::enter_prices);
}

constexpr ReportCommand order_command{
    .text = U"An order", .title_first = true, .key = U"4900", .count_goes_to = &Form1::rowcount, .run = excelbijiaok};

constexpr ReportCommand prices_command{
    .text = U"An prices", .title_first = true, .key = U"200", .count_goes_to = &Form1::rowcount, .run = excelbijiaop};

} // namespace tarvik
