#include "dockets/dockets.h"

#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"
#include "runs/keyed_scans.h"

namespace tarvik {

namespace {

constexpr std::u32string_view command_text = U"An dandocket";

// Columns of 3160.txt
constexpr std::size_t contact_column = 4;
constexpr std::size_t telephone_column = 5;
constexpr std::size_t customer_column = 6;
constexpr std::size_t model_column = 11;
constexpr int delivery_column = 15;
constexpr std::size_t serial_column = 16;
constexpr std::size_t fault_column = 30;
constexpr std::size_t finding_column = 31;
constexpr std::size_t part_column = 32;
constexpr std::size_t other_finding_column = 33;

constexpr int first_row = 12;
constexpr int first_list_column = 2, last_list_column = 8;
constexpr double last_year_without_warranty = 13; // of the two digits in the serial number
constexpr std::size_t year_start = 7, year_length = 2;

/// The two characters of a serial number that stand for the year, and whether they are a number that gives warranty.
struct Year {
    TextView digits;
    bool in_warranty;
};

Year year_of(TextView serial)
{
    const TextView digits = mid(serial, year_start, year_length);
    return {digits, number(digits).value_or(0) > last_year_without_warranty};
}

void write_record(const Program& program, Worksheet& sheet, int row, std::size_t record)
{
    const auto raised = [&](std::size_t column) { return upper(program.module1.suf.cell(record, column)); };
    const Text part = raised(part_column), finding = raised(finding_column);
    const Year year = year_of(program.module1.suf.cell(record, serial_column));
    sheet.set_cell(row, 2, raised(model_column));
    sheet.set_cell(row, 3, raised(serial_column));
    sheet.set_cell(row, 4, year.in_warranty ? Text(U"质保期内") : upper(year.digits));
    sheet.set_cell(row, 5, part.empty() ? raised(fault_column) : Text(U"器件问题"));
    sheet.set_cell(row, 6, finding.empty() ? raised(other_finding_column) : finding);
    sheet.set_cell(row, 7, part);
    if (!part.empty()) sheet.set_cell(row, 8, Text(U"1"));
}

/// Gives how many devices are in warranty.
int write_list(const Program& program, Worksheet& sheet)
{
    int in_warranty = 0;
    for (std::size_t record = 0; record < record_count(program); ++record) {
        write_record(program, sheet, first_row + static_cast<int>(record), record);
        if (year_of(program.module1.suf.cell(record, serial_column)).in_warranty) ++in_warranty;
    }
    return in_warranty;
}

void write_head(const Program& program, Worksheet& sheet, int in_warranty)
{
    const int records = program.form1.recordcount;
    sheet.set_cell(7, 2, first_field(program, customer_column));
    sheet.set_cell(
        8, 2, first_field(program, contact_column) + Text(contact_blanks) + first_field(program, telephone_column));
    sheet.set_cell(9, 2, first_field(program, delivery_column));
    sheet.set_cell(10, 2, static_cast<double>(records));
    sheet.set_cell(10, 5, static_cast<double>(in_warranty));
    sheet.set_cell(10, 7, static_cast<double>(records - in_warranty));
}

} // namespace

void excecopy60(Program& program)
{
    if (!key_gets_sheet(program, command_text) || !(program.form1.partcount > 0)) return;
    SpreadsheetTask task(program, installed(program, files::service_list));
    program.form1.batchgate = false;
    clear_left_rows(task.sheet(), first_row, first_list_column, last_list_column);
    write_head(program, task.sheet(), write_list(program, task.sheet()));
    save_sheet(program, task, command_text,
               {first_field(program, delivery_column),
                {first_field(program, customer_column), first_field(program, serial_column)}});
    close_sheet(program);
}

constexpr ReportCommand service_list_command{
    .text = command_text,
    .question = excel_question,
    .report = U"3160",
    .question_tail = service_question_tail,
    .key = own_make,
    .key_column = delivery_column,
    .timer = &Form1::Timer10,
};

constexpr SheetFamily service_list_family{
    .timer = &Form1::Timer10,
    .scan = count_in_report<files::report_3160>,
    .sheet = excecopy60,
};

} // namespace tarvik
