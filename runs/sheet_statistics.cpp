#include "runs/sheet_statistics.h"

#include "columns/statistics.h"
#include "mainwindow/installation_files.h"
#include "runs/tasks.h"

namespace tarvik {

void statistics(Program& program, int column, int& row, int sheetcol, int offset)
{
    const auto statistic = count_for_command(program, column);
    if (!statistic) return;
    ScratchFile file(program, statistics_file);
    SpreadsheetTask task(program, installed(program, files::label_list));
    int target = row;
    for (const Count& value : statistic->counts) {
        task.sheet().set_cell(target, sheetcol, upper(value.value));
        task.sheet().set_cell(target, sheetcol + offset, number_text(value.count));
        ++target;
    }
    task.finish(Changes::Save);
    row = target;
    program.form1.sheetrow = target;
    show_statistic(program, file, *statistic);
}

} // namespace tarvik
