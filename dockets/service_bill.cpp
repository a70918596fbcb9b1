#include "dockets/dockets.h"

#include "calendar/calendar.h"
#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"
#include "runs/keyed_scans.h"

namespace tarvik {

namespace {

constexpr std::u32string_view command_text = U"An bendocket";

// Columns of 3138.txt
constexpr int device_column = 15;
constexpr std::size_t customer_column = 5;
constexpr std::size_t delivery_column = 20;
// Columns of 3137.txt
constexpr std::size_t order_name_column = 15;
constexpr std::size_t folder_column = 23;

Text starred(TextView device)
{
    return U"*" + upper(device) + U"*";
}

Text day_received(TextView time)
{
    Text day = first_word(time);
    return xsd(day);
}

/// The code of a delivery way; none for a text that is not exactly one of them.
Text delivery_code(TextView way)
{
    struct Code {
        std::u32string_view way, code;
    };
    static constexpr Code codes[] = {{U"交包发", U"B/0"}, {U"批次", U"P/0"}, {U"交物流", U"W/0"}};
    for (const Code& row : codes)
        if (way == TextView(row.way)) return Text(row.code);
    return {};
}

constexpr Cell emptied_cells[] = {{4, 2}, {2, 5}, {5, 2}, {5, 4}, {5, 6},  {6, 2},  {6, 4},
                                  {6, 6}, {8, 2}, {8, 4}, {9, 6}, {24, 6}, {24, 2}, {23, 2}};

constexpr CellItem device_items[] = {
    {.cell = {2, 5}, .field = device_column, .shape = starred},
    {.cell = {5, 2}, .field = customer_column},
    {.cell = {5, 4}, .field = 3},
    {.cell = {5, 6}, .field = 4, .shape = telecall},
    {.cell = {6, 2}, .field = 19},
    {.cell = {6, 4}, .field = delivery_column, .shape = delivery_code},
    {.cell = {6, 6}, .field = 18, .shape = day_received},
    {.cell = {8, 2}, .field = 10},
    {.cell = {8, 4}, .field = 9},
    {.cell = {9, 6}, .field = device_column, .shape = upper},
    {.cell = {4, 2}, .field = 14, .shape = upper},
    {.cell = {13, 2}, .field = 16},
    {.cell = {18, 2}, .field = 30, .only_filled = true},
    {.cell = {24, 6}, .field = 22},
    {.cell = {24, 2}, .field = 28},
    {.cell = {23, 2}, .field = 32},
};

constexpr CellItem order_items[] = {
    {.cell = {11, 2}, .field = 37, .shape = upper},
    {.cell = {12, 2}, .field = 35, .shape = upper},
};

/// Puts the device's line in 3137.txt into the first row. Gives whether there is one.
bool load_order(Program& program, const Text& device)
{
    if (query3(program, device, true) <= 0) return false;
    devision1(program);
    return true;
}

void end_run_without(Program& program, const Text& device)
{
    tell(program, U"3137文件中没有此序列号 :" + device + U".");
    stop_run(program);
    program.run.passed.push_back({device, U"3137.txt中没有此序列号"});
}

} // namespace

void excecopy6(Program& program)
{
    if (!key_gets_sheet(program, command_text) || !(program.form1.partcount > 0)) return;
    SpreadsheetTask task(program, installed(program, files::service_bill));
    for (const Cell& cell : emptied_cells) task.sheet().set_cell(cell.row, cell.column, Text());
    write_items(program, task.sheet(), device_items);

    const Text device = first_field(program, device_column);
    const Text customer = first_field(program, customer_column);
    const Text delivery = first_field(program, delivery_column);
    if (!load_order(program, device)) {
        end_run_without(program, device);
        task.finish(saves_sheets(program, command_text) ? Changes::Save : Changes::Discard);
        return;
    }
    write_items(program, task.sheet(), order_items);
    save_sheet(program, task, command_text,
               {first_field(program, folder_column), {customer, first_field(program, order_name_column), delivery}});
    close_sheet(program);
}

constexpr ReportCommand service_bill_command{
    .text = command_text,
    .question = excel_question,
    .report = U"3138",
    .question_tail = service_question_tail,
    .key = own_make,
    .key_column = device_column,
    .timer = &Form1::Timer6,
};

constexpr SheetFamily service_bill_family{
    .timer = &Form1::Timer6,
    .scan = count_in_report<files::report_3138>,
    .sheet = excecopy6,
};

} // namespace tarvik
