#include "runs/blanking.h"

#include "mainwindow/installation_files.h"
#include "runs/tasks.h"

namespace tarvik {

namespace {

struct Body {
    int first_row, last_row;
};
constexpr int last_column = 10;
constexpr Body label_body{5, 500};
constexpr Body docket_body{13, 1000};

void blank(Program& program, TextView name, const Body& body)
{
    const Text path = installed(program, name);
    const Files& files = program.platform.files;
    const auto known = program.blank_templates.find(path);
    if (known != program.blank_templates.end() && files.file_exists(path) && files.stamp(path) == known->second) return;
    SpreadsheetTask task(program, path);
    task.sheet().clear(body.first_row, body.last_row, 1, last_column);
    task.finish(Changes::Save);
    program.blank_templates[path] = files.stamp(path);
}

} // namespace

void excelce(Program& program)
{
    blank(program, files::label_list, label_body);
}

void excelce2(Program& program)
{
    for (const auto name : {files::older_docket, files::older_long_docket, files::docket, files::long_docket})
        blank(program, name, docket_body);
}

} // namespace tarvik
