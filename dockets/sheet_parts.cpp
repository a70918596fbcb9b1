#include "dockets/sheet_parts.h"

#include "columns/columns.h"
#include "mainwindow/installation_files.h"
#include "runs/blanking.h"
#include "runs/keyed_scans.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr int longest_short_list = 33; // lines that z5 holds; longer lists go to z6
constexpr int marked_list = 68;        // a longer one is marked in the file's name
constexpr std::u32string_view long_list_mark = U"陈默然";

template <typename Write>
void each_text(const Program& program, std::span<const CellItem> items, Write write)
{
    for (const CellItem& item : items) {
        const Text field = first_field(program, item.field);
        if (!item.only_filled || !field.empty()) write(item.cell, item.shape(field));
    }
}

} // namespace

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

void write_items(const Program& program, Worksheet& sheet, std::span<const CellItem> items)
{
    each_text(program, items,
              [&](const Cell& cell, Text text) { sheet.set_cell(cell.row, cell.column, std::move(text)); });
}

void write_items(const Program& program, TextDocument& document, std::span<const CellItem> items)
{
    each_text(program, items,
              [&](const Cell& cell, TextView text) { document.set_cell_text(cell.row, cell.column, text); });
}

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

bool sheet_wanted(const Program& program, TextView command)
{
    return program.form1.dbresult && TextView(program.form1.query_box().text()).contains(command);
}

bool key_gets_sheet(Program& program, TextView command)
{
    if (sheet_wanted(program, command)) return true;
    const int key = program.form1.batchcursor;
    if (program.form1.dbresult && key >= 0)
        program.run.passed.push_back(
            {program.module1.keylist.get(static_cast<std::size_t>(key)).str(), U"框中已不是这个命令"});
    return false;
}

bool saves_sheets(Program& program, TextView command)
{
    const bool leads = command_leads(program, command);
    if (!leads) program.run.ahead_of_command = true;
    return leads;
}

void save_sheet(Program& program, SpreadsheetTask& task, TextView command, const SheetName& name)
{
    const bool saves = saves_sheets(program, command);
    if (saves) task.save_as(sheet_path(program, name));
    task.finish(saves ? Changes::Save : Changes::Discard);
}

Text docket_template(const Program& program)
{
    return installed(program, program.form1.partcount > longest_short_list ? files::long_docket : files::docket);
}

Text marked_for_length(const Program& program, Text name)
{
    if (program.form1.partcount > marked_list) name += long_list_mark;
    return name;
}

void write_counts(const Program& program, Worksheet& sheet)
{
    const Form1& form1 = program.form1;
    sheet.set_cell(10, 2, static_cast<double>(form1.allcount));
    sheet.set_cell(10, 5, static_cast<double>(form1.allcount - form1.partcount));
    sheet.set_cell(10, 7, static_cast<double>(form1.partcount));
}

void count_devices(Program& program, TextView key)
{
    program.form1.allcount = query2(program, key, true);
    program.form1.partcount = query2(program, key, false);
}

void prepare_docket(Program& program)
{
    devision1(program);
    excelce2(program);
}

} // namespace tarvik
