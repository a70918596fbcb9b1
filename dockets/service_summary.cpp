#include "dockets/dockets.h"

#include "calendar/calendar.h"
#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"
#include "runs/batch_runner.h"

namespace tarvik {

namespace {

constexpr std::u32string_view command_text = U"An wodben";

// Columns of the report
constexpr std::size_t received_column = 18;
constexpr std::size_t delivery_column = 20;
constexpr std::size_t folder_column = 22;

constexpr int first_row = 2;
constexpr int last_list_column = 11;

void write_record(const Program& program, Worksheet& sheet, int row, std::size_t record)
{
    const auto raised = [&](std::size_t column) { return upper(program.module1.suf.cell(record, column)); };
    sheet.set_cell(row, 1, static_cast<double>(record + 1));
    for (int column = 2; column <= 8; ++column) {
        Text text = telecall(raised(static_cast<std::size_t>(column)));
        if (column == 5) text += U" " + raised(received_column);
        if (column == 7) text += U" " + raised(delivery_column);
        sheet.set_cell(row, column, std::move(text));
    }
    sheet.set_cell(row, 9, raised(10));
    sheet.set_cell(row, 10, raised(32));
    sheet.set_cell(row, 11, raised(15));
}

} // namespace

void excecopy7(Program& program)
{
    if (!sheet_wanted(program, command_text)) return;
    SpreadsheetTask task(program, installed(program, files::service_summary));
    clear_left_rows(task.sheet(), first_row, 1, last_list_column);
    for (std::size_t record = 0; record < record_count(program); ++record)
        write_record(program, task.sheet(), first_row + static_cast<int>(record), record);
    save_sheet(program, task, command_text,
               {.folder_text = first_field(program, folder_column), .parts = {}, .ending = U"_汇总"});
}

constexpr ReportCommand service_summary_command{
    .text = command_text,
    .question = word_question,
    .report = U"3158",
    .key = own_make,
    .count_goes_to = &Form1::recordcount,
    .run =
        [](Program& program) {
            excecopy7(program);
            show_caption(program, U"Tarvik 计算 ");
        },
};

} // namespace tarvik
