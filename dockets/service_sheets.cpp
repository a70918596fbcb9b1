#include "dockets/dockets.h"

#include "calendar/calendar.h"
#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"
#include "runs/keyed_scans.h"

namespace tarvik {

namespace {

constexpr std::u32string_view own_make = U"自制品"; ///< picks the lines that are billed
constexpr std::u32string_view service_question_tail =
    U"在此目录下，还应有包含RAM返修单号的，更名为3137.txt的辅助数据表文件。";

// Empties the rows from `first_row` down to the first one that holds nothing in these columns. Where nothing blanks a
// template, they are what a list of an earlier run has left in it.
void clear_left_rows(Worksheet& sheet, int first_row, int first_column, int last_column)
{
    const auto is_empty = [&](int row) {
        for (int column = first_column; column <= last_column; ++column)
            if (!sheet.is_empty(row, column)) return false;
        return true;
    };
    int end = first_row;
    while (!is_empty(end)) ++end;
    if (end > first_row) sheet.clear(first_row, end - 1, first_column, last_column);
}

// The bill for one device

constexpr std::u32string_view bill_command_text = U"An bendocket";

// Columns of 3138.txt
constexpr int bill_device_column = 15;
constexpr std::size_t bill_customer_column = 5;
constexpr std::size_t bill_delivery_column = 20;
// Columns of 3137.txt
constexpr std::size_t order_name_column = 15;
constexpr std::size_t bill_folder_column = 23;

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

constexpr CellItem device_items[] = {
    {.cell = {2, 5}, .field = bill_device_column, .shape = starred},
    {.cell = {5, 2}, .field = bill_customer_column},
    {.cell = {5, 4}, .field = 3},
    {.cell = {5, 6}, .field = 4, .shape = telecall},
    {.cell = {6, 2}, .field = 19},
    {.cell = {6, 4}, .field = bill_delivery_column, .shape = delivery_code},
    {.cell = {6, 6}, .field = 18, .shape = day_received},
    {.cell = {8, 2}, .field = 10},
    {.cell = {8, 4}, .field = 9},
    {.cell = {9, 6}, .field = bill_device_column, .shape = upper},
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

} // namespace

void excecopy6(Program& program)
{
    if (!key_gets_sheet(program, bill_command_text) || !(program.form1.partcount > 0)) return;
    SpreadsheetTask task(program, installed(program, files::service_bill));
    const auto write = [&task](const Cell& cell, const Text& text) {
        task.sheet().set_cell(cell.row, cell.column, text);
    };
    write_items(program, device_items, write);

    const Text device = first_field(program, bill_device_column);
    const Text customer = first_field(program, bill_customer_column);
    const Text delivery = first_field(program, bill_delivery_column);
    if (query3(program, device, true) <= 0) {
        tell(program, U"3137文件中没有此序列号 :" + device + U".");
        stop_run(program);
        program.run.passed.push_back({device, U"3137.txt中没有此序列号"});
        task.finish(saves_sheets(program, bill_command_text) ? Changes::Save : Changes::Discard);
        return;
    }
    devision1(program); // the device's line in 3137.txt is the first row from here on
    write_items(program, order_items, write);
    save_sheet(
        program, task, bill_command_text,
        {first_field(program, bill_folder_column), {customer, first_field(program, order_name_column), delivery}});
    close_sheet(program);
}

constexpr ReportCommand service_bill_command{
    .text = bill_command_text,
    .question = excel_question,
    .report = U"3138",
    .question_tail = service_question_tail,
    .key = own_make,
    .key_column = bill_device_column,
    .sheets = {.timer = &Form1::Timer6, .scan = count_in_report<files::report_3138>, .sheet = excecopy6},
};

namespace {

// The list of a delivery

constexpr std::u32string_view list_command_text = U"An dandocket";

// Columns of 3160.txt
constexpr std::size_t list_contact_column = 4;
constexpr std::size_t list_customer_column = 6;
constexpr std::size_t model_column = 11;
constexpr int list_delivery_column = 15;
constexpr std::size_t serial_column = 16;
constexpr std::size_t fault_column = 30;
constexpr std::size_t finding_column = 31;
constexpr std::size_t part_column = 32;
constexpr std::size_t other_finding_column = 33;

constexpr int list_first_row = 12;
constexpr int first_list_column = 2, last_list_column = 8;
constexpr double last_year_without_warranty = 13; // of the two digits in the serial number
constexpr std::size_t year_start = 7, year_length = 2;

// Gives whether the device is in warranty.
bool write_device(const Program& program, Worksheet& sheet, int row, std::size_t record)
{
    const auto raised = [&](std::size_t column) { return upper(program.module1.suf.cell(record, column)); };
    const Text part = raised(part_column), finding = raised(finding_column);
    const TextView year = mid(program.module1.suf.cell(record, serial_column), year_start, year_length);
    const bool in_warranty = number(year).value_or(0) > last_year_without_warranty;
    sheet.set_cell(row, 2, raised(model_column));
    sheet.set_cell(row, 3, raised(serial_column));
    sheet.set_cell(row, 4, in_warranty ? Text(U"质保期内") : upper(year));
    sheet.set_cell(row, 5, part.empty() ? raised(fault_column) : Text(U"器件问题"));
    sheet.set_cell(row, 6, finding.empty() ? raised(other_finding_column) : finding);
    sheet.set_cell(row, 7, part);
    if (!part.empty()) sheet.set_cell(row, 8, Text(U"1"));
    return in_warranty;
}

} // namespace

void excecopy60(Program& program)
{
    if (!key_gets_sheet(program, list_command_text) || !(program.form1.partcount > 0)) return;
    SpreadsheetTask task(program, installed(program, files::service_list));
    program.form1.batchgate = false;
    clear_left_rows(task.sheet(), list_first_row, first_list_column, last_list_column);
    int in_warranty = 0;
    for (std::size_t record = 0; record < record_count(program); ++record)
        if (write_device(program, task.sheet(), list_first_row + static_cast<int>(record), record)) ++in_warranty;
    write_addressee(program, task.sheet(), list_customer_column, list_contact_column, list_delivery_column);
    write_counts(task.sheet(), program.form1.recordcount, in_warranty);
    save_sheet(program, task, list_command_text,
               {first_field(program, list_delivery_column),
                {first_field(program, list_customer_column), first_field(program, serial_column)}});
    close_sheet(program);
}

constexpr ReportCommand service_list_command{
    .text = list_command_text,
    .question = excel_question,
    .report = U"3160",
    .question_tail = service_question_tail,
    .key = own_make,
    .key_column = list_delivery_column,
    .sheets = {.timer = &Form1::Timer10, .scan = count_in_report<files::report_3160>, .sheet = excecopy60},
};

namespace {

// The summary of a report

constexpr std::u32string_view summary_command_text = U"An wodben";

// Columns of the report
constexpr std::size_t received_column = 18;
constexpr std::size_t summary_delivery_column = 20;
constexpr std::size_t summary_folder_column = 22;

constexpr int summary_first_row = 2;
constexpr int summary_last_column = 11;

void write_summary_row(const Program& program, Worksheet& sheet, int row, std::size_t record)
{
    const auto raised = [&](std::size_t column) { return upper(program.module1.suf.cell(record, column)); };
    sheet.set_cell(row, 1, static_cast<double>(record + 1));
    for (int column = 2; column <= 8; ++column) {
        Text text = telecall(raised(static_cast<std::size_t>(column)));
        if (column == 5) text += U" " + raised(received_column);
        if (column == 7) text += U" " + raised(summary_delivery_column);
        sheet.set_cell(row, column, std::move(text));
    }
    sheet.set_cell(row, 9, raised(10));
    sheet.set_cell(row, 10, raised(32));
    sheet.set_cell(row, 11, raised(15));
}

} // namespace

void excecopy7(Program& program)
{
    if (!sheet_wanted(program, summary_command_text)) return;
    SpreadsheetTask task(program, installed(program, files::service_summary));
    clear_left_rows(task.sheet(), summary_first_row, 1, summary_last_column);
    for (std::size_t record = 0; record < record_count(program); ++record)
        write_summary_row(program, task.sheet(), summary_first_row + static_cast<int>(record), record);
    save_sheet(program, task, summary_command_text,
               {.folder_text = first_field(program, summary_folder_column), .parts = {}, .ending = U"_汇总"});
}

constexpr ReportCommand service_summary_command{
    .text = summary_command_text,
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
