#include "dockets/sheet_parts.h"

#include <algorithm>

namespace tarvik {

Text first_field(const Program& program, std::size_t column)
{
    return program.module1.suf.cell(0, column).str();
}

std::size_t record_count(const Program& program)
{
    return static_cast<std::size_t>(std::max(0, program.form1.recordcount));
}

Text first_word(TextView text)
{
    return text.substr(0, text.find(U' ')).str();
}

Text contact(const Program& program, std::size_t column)
{
    return first_field(program, column) + U"     " + first_field(program, column + 1);
}

void write_addressee(const Program& program, Worksheet& sheet, std::size_t customer_column, std::size_t contact_column,
                     std::size_t number_column)
{
    sheet.set_cell(7, 2, first_field(program, customer_column));
    sheet.set_cell(8, 2, contact(program, contact_column));
    sheet.set_cell(9, 2, first_field(program, number_column));
}

void write_counts(Worksheet& sheet, int all, int in_warranty)
{
    sheet.set_cell(10, 2, static_cast<double>(all));
    sheet.set_cell(10, 5, static_cast<double>(in_warranty));
    sheet.set_cell(10, 7, static_cast<double>(all - in_warranty));
}

void write_items(const Program& program, std::span<const CellItem> items,
                 const std::function<void(const Cell& cell, const Text& text)>& write)
{
    for (const CellItem& item : items) {
        const Text field = first_field(program, item.field);
        if (!item.only_filled || !field.empty()) write(item.cell, item.shape ? item.shape(field) : field);
    }
}

bool saves_sheets(Program& program, TextView command)
{
    const bool leads = TextView(program.form1.query_box().text()).starts_with(command);
    if (!leads) program.run.ahead_of_command = true;
    return leads;
}

void save_sheet(Program& program, SpreadsheetTask& task, TextView command, const SheetName& name)
{
    const bool saves = saves_sheets(program, command);
    if (saves) task.save_as(sheet_path(program, name));
    task.finish(saves ? Changes::Save : Changes::Discard);
}

} // namespace tarvik
