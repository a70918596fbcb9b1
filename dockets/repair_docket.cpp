#include "dockets/dockets.h"

#include "columns/columns.h"
#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"
#include "runs/keyed_scans.h"

namespace tarvik {

namespace {

constexpr std::u32string_view command_text = U"An docket";

// Columns of the reports.
constexpr int receipt_column = 3;
constexpr std::size_t order_key_column = 4;
constexpr std::size_t folder_column = 7;
constexpr std::size_t customer_column = 8;
constexpr std::size_t contact_column = 9;
constexpr std::size_t telephone_column = 10;
constexpr std::size_t return_number_column = 12;
constexpr std::size_t order_key_start = 4; // character of the order key's field

constexpr int longest_older_list = 45; // lines that z2 holds

/// Where what is written goes.
struct Layout {
    int first_list_row;
    Cell return_number;
    void (*head)(const Program& program, Worksheet& sheet);
};

Text contact(const Program& program)
{
    return first_field(program, contact_column) + Text(contact_blanks) + first_field(program, telephone_column);
}

void write_head(const Program& program, Worksheet& sheet)
{
    sheet.set_cell(7, 2, first_field(program, customer_column));
    sheet.set_cell(8, 2, contact(program));
    sheet.set_cell(9, 2, first_field(program, receipt_column));
    write_counts(program, sheet);
}

bool long_older_list(const Program& program)
{
    return program.form1.partcount > longest_older_list;
}

// The older layout has label and value in one cell.
void write_older_head(const Program& program, Worksheet& sheet)
{
    const Form1& form1 = program.form1;
    sheet.set_cell(8, 1, U"客户名称： " + first_field(program, customer_column));
    sheet.set_cell(9, 1, U"客户联系人及电话:" + contact(program));
    sheet.set_cell(10, 1, U"收货凭证号:" + first_field(program, receipt_column));
    sheet.set_cell(11, 1,
                   U"返修总台数     " + number_text(form1.allcount) + U"     保内台数     " +
                       number_text(form1.allcount - form1.partcount) + U"     保外台数" + U"    " +
                       number_text(form1.partcount));
    sheet.set_cell(long_older_list(program) ? 81 : 59, 1, U"总金额:             ");
}

constexpr Layout docket_layout{12, {8, 6}, write_head};
constexpr Layout older_layout{13, {9, 6}, write_older_head};

Text older_template(const Program& program)
{
    return installed(program, long_older_list(program) ? files::older_long_docket : files::older_docket);
}

void write_list(const Program& program, Worksheet& sheet, int row, int first, int last)
{
    for (std::size_t i = 0; i < record_count(program); ++i, ++row)
        for (int column = first; column <= last; ++column)
            sheet.set_cell(row, column - first + 1,
                           upper(program.module1.suf.cell(i, static_cast<std::size_t>(column))));
}

// The return number of the receipt's order, if there is one, whose line then stands in row 0 in place of the record.
std::optional<Text> look_up_return_number(Program& program)
{
    Table& suf = program.module1.suf;
    const Text key = mid(suf.cell(0, order_key_column), order_key_start).str();
    suf.set_cell(0, order_key_column, key);
    if (query3(program, key, true) <= 0) return std::nullopt;
    devision1(program);
    return first_field(program, return_number_column);
}

void save_docket(Program& program, SpreadsheetTask& task, const Text& return_number, const Text& receipt)
{
    save_sheet(program, task, command_text,
               {first_field(program, folder_column), {marked_for_length(program, receipt), return_number}});
}

// The older docket lies in the output folder itself.
void save_older_docket(Program& program, SpreadsheetTask& task, const Text& return_number, const Text& receipt)
{
    task.save_as(plain_sheet_path(program, receipt + U"-" + return_number + U".xlsx"));
    task.finish(Changes::Save);
    ++program.run.older_layouts;
}

} // namespace

void excecopy(Program& program, int first, int last)
{
    Form1& form1 = program.form1;
    if (!form1.dbresult) return;
    const bool own_layout = sheet_wanted(program, command_text);
    const Layout& layout = own_layout ? docket_layout : older_layout;

    SpreadsheetTask task(program, own_layout ? docket_template(program) : older_template(program), true);
    form1.batchgate = false;
    write_list(program, task.sheet(), layout.first_list_row, first, last);
    layout.head(program, task.sheet());

    const Text receipt = first_field(program, receipt_column);
    const auto return_number = look_up_return_number(program);
    if (return_number) task.sheet().set_cell(layout.return_number.row, layout.return_number.column, *return_number);
    (own_layout ? save_docket : save_older_docket)(program, task, return_number.value_or(Text()), receipt);
    close_sheet(program);
}

constexpr ReportCommand docket_command{
    .text = command_text,
    .question = excel_question,
    .report = U"3139",
    .question_tail = U"在此目录下，还应有，更名为3137.txt，3138.txt的辅助数据表文件。",
    .key = U"4900",
    .key_column = receipt_column,
    .timer = &Form1::Timer3,
};

constexpr SheetFamily docket_family{
    .timer = &Form1::Timer3,
    .scan = count_devices,
    .prepare = prepare_docket,
    .sheet = [](Program& program) { excecopy(program, 4, 7); },
};

} // namespace tarvik
