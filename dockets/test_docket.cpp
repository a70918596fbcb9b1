#include "dockets/dockets.h"

#include "designer/design/design.h"
#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"

namespace tarvik {

namespace {

constexpr std::u32string_view command_text = U"An testdocket";

// Columns of the reports.
constexpr std::size_t receipt_column = 16;
constexpr std::size_t return_number_column = 17;
constexpr std::size_t contact_column = 19;
constexpr std::size_t telephone_column = 20;
constexpr std::size_t folder_column = 24;

/// The list goes first. Its first row may be 0, as which an empty box counts, but no sheet has that row.
void write_design(const Program& program, Worksheet& sheet)
{
    const Form4& form4 = program.form4;
    const auto element = [&suf = program.module1.suf](int row, int column) {
        return suf.cell(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
    };
    const Elements elements{element, static_cast<int>(record_count(program))};
    const auto write = [&sheet](const DesignWrite& cell) {
        if (cell.row >= 1) sheet.set_cell(cell.row, cell.column, cell.text.str());
    };
    const TextBox& row_box = form4.Text1[Form4::first_dynamic];
    const auto first_row = row_box.text().empty() ? 0 : design_number(row_box);
    if (first_row >= 0) write_dynamic_rows(form4, elements, *first_row, write);
    write_static_rows(form4, elements, write);
}

} // namespace

void excecopys(Program& program)
{
    if (!key_gets_sheet(program, command_text)) return;
    SpreadsheetTask task(program, docket_template(program));
    program.form1.batchgate = false;
    write_design(program, task.sheet());
    write_counts(program, task.sheet());
    task.sheet().set_cell(
        8, 2, first_field(program, contact_column) + Text(contact_blanks) + first_field(program, telephone_column));
    const Text receipt = marked_for_length(program, first_field(program, receipt_column));
    save_sheet(program, task, command_text,
               {first_field(program, folder_column), {receipt, first_field(program, return_number_column)}});
    close_sheet(program);
}

constexpr ReportCommand test_docket_command{
    .text = command_text,
    .design = files::design_a,
    .key_column = design_column,
    .timer = &Form1::Timer4,
};

constexpr SheetFamily test_docket_family{
    .timer = &Form1::Timer4,
    .scan = count_devices,
    .prepare = prepare_docket,
    .sheet = excecopys,
};

} // namespace tarvik
