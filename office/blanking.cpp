#include "office/blanking.h"

#include "mainwindow/spreadsheet_task.h"

namespace tarvik {

namespace {

struct Body {
    int first_row, last_row;
};
constexpr int last_column = 10;
constexpr Body docket_body{13, 1000};
constexpr std::u32string_view docket_templates[] = {U"z2.xlsx", U"z3.xlsx", U"z5.xlsx", U"z6.xlsx"};

void blank(Program& program, TextView name, const Body& body)
{
    const Text path = installed(program, name);
    const Files& files = program.platform.files;
    const auto known = program.blank_templates.find(path);
    if (known != program.blank_templates.end() && files.file_exists(path) && files.stamp(path) == known->second) return;
    SpreadsheetTask task(program, path);
    task.sheet().clear(body.first_row, body.last_row, 1, last_column);
    task.finish(SpreadsheetTask::Changes::Save);
    program.blank_templates[path] = files.stamp(path);
}

} // namespace

void excelce2(Program& program)
{
    for (const auto name : docket_templates) blank(program, name, docket_body);
}

} // namespace tarvik
