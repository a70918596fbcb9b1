#include "dockets/dockets.h"

#include "designer/design/design.h"
#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"

#include <vector>

namespace tarvik {

namespace {

constexpr std::u32string_view command_text = U"An testdocket";

// Columns of the reports.
constexpr std::size_t receipt_column = 16;
constexpr std::size_t return_number_column = 17;
constexpr std::size_t contact_column = 19;
constexpr std::size_t telephone_column = 20;
constexpr std::size_t folder_column = 24;

// Boxes of the design: pairs for single cells up to `list_row_box`, then one box for each column of the list.
constexpr int list_row_box = Form4::first_dynamic;

/// Where a value of the table goes in the list: `column` of the sheet, `source` of SUF.
struct ListColumn {
    int column;
    std::size_t source;
};

/// The box's number if it is at least 0.
std::optional<int> used_number(const TextBox& box)
{
    const auto number = design_number(box);
    return number && *number >= 0 ? number : std::nullopt;
}

/// The sheet row of the first record; nothing when the design has no list. An empty box means 0.
std::optional<int> list_row(const Form4& form4)
{
    const TextBox& box = form4.Text1[list_row_box];
    return box.text().empty() ? 0 : used_number(box);
}

std::vector<ListColumn> list_columns(const Form4& form4)
{
    std::vector<ListColumn> columns;
    for (int k = list_row_box + 1; k <= Form4::last_box; ++k) {
        const auto column = used_number(form4.Text1[k]), source = used_number(form4.Text2[k]);
        if (column && source) columns.push_back({*column, static_cast<std::size_t>(*source)});
    }
    return columns;
}

/// Row and column 0 are let through by the design, but no sheet has them.
void write_item(Worksheet& sheet, const Cell& target, TextView text)
{
    if (target.row >= 1 && target.column >= 1 && !text.empty()) sheet.set_cell(target.row, target.column, text.str());
}

void write_list(const Program& program, Worksheet& sheet)
{
    auto row = list_row(program.form4);
    if (!row) return;
    const auto columns = list_columns(program.form4);
    for (std::size_t i = 0; i < record_count(program); ++i, ++*row)
        for (const auto& [column, source] : columns)
            write_item(sheet, {*row, column}, program.module1.suf.cell(i, source));
}

void write_fixed_items(const Program& program, Worksheet& sheet)
{
    const auto &targets = program.form4.Text1, &sources = program.form4.Text2;
    for (int k = 0; k < list_row_box; k += 2) {
        const auto row = used_number(targets[k]), column = used_number(targets[k + 1]);
        const auto source_row = used_number(sources[k]), source_column = used_number(sources[k + 1]);
        if (row && column && source_row && source_column)
            write_item(sheet, {*row, *column},
                       program.module1.suf.cell(static_cast<std::size_t>(*source_row),
                                                static_cast<std::size_t>(*source_column)));
    }
}

} // namespace

void excecopys(Program& program)
{
    if (!key_gets_sheet(program, command_text)) return;
    SpreadsheetTask task(program, docket_template(program));
    program.form1.batchgate = false;
    write_list(program, task.sheet());
    write_fixed_items(program, task.sheet());
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
