#include "dockets/dockets.h"

#include "columns/columns.h"
#include "designer/design/design.h"
#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"
#include "runs/keyed_scans.h"

namespace tarvik {

namespace {

constexpr int longest_short_list = 33; // lines that z5 holds; longer lists go to z6
constexpr int marked_list = 68;        // a longer one is marked in the file's name
constexpr std::u32string_view long_list_mark = U"陈默然";

// The template for the number of devices out of warranty, as a path.
Text docket_template(const Program& program)
{
    return installed(program, program.form1.partcount > longest_short_list ? files::long_docket : files::docket);
}

// The first part of a docket's name, marked when the list is longer than z6 is prepared for.
Text marked_for_length(const Program& program, Text name)
{
    if (program.form1.partcount > marked_list) name += long_list_mark;
    return name;
}

void write_device_counts(const Program& program, Worksheet& sheet)
{
    const Form1& form1 = program.form1;
    write_counts(sheet, form1.allcount, form1.allcount - form1.partcount);
}

// The key's lines among all devices into allcount, those out of warranty into partcount and the table.
void count_devices(Program& program, TextView key)
{
    program.form1.allcount = query2(program, key, true);
    program.form1.partcount = query2(program, key, false);
}

// Empties the bodies of all four templates, which must be there.
void excelce2(Program& program)
{
    for (const auto name : {files::older_docket, files::older_long_docket, files::docket, files::long_docket})
        blank_template(program, name, 13, 1000);
}

// Splits the table and empties the templates.
void prepare_docket(Program& program)
{
    devision1(program);
    excelce2(program);
}

// "An docket", with its fixed cells

constexpr std::u32string_view docket_command_text = U"An docket";

// Columns of the reports.
constexpr int receipt_column = 3;
constexpr std::size_t order_key_column = 4;
constexpr std::size_t folder_column = 7;
constexpr std::size_t customer_column = 8;
constexpr std::size_t contact_column = 9;
constexpr std::size_t return_number_column = 12;
constexpr std::size_t order_key_start = 4; // character of the order key's field

constexpr int longest_older_list = 45; // lines that z2 holds

void write_head(const Program& program, Worksheet& sheet)
{
    write_addressee(program, sheet, customer_column, contact_column, receipt_column);
    write_device_counts(program, sheet);
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
    sheet.set_cell(9, 1, U"客户联系人及电话:" + contact(program, contact_column));
    sheet.set_cell(10, 1, U"收货凭证号:" + first_field(program, receipt_column));
    sheet.set_cell(11, 1,
                   U"返修总台数     " + number_text(form1.allcount) + U"     保内台数     " +
                       number_text(form1.allcount - form1.partcount) + U"     保外台数" + U"    " +
                       number_text(form1.partcount));
    sheet.set_cell(long_older_list(program) ? 81 : 59, 1, U"总金额:             ");
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

} // namespace

void excecopy(Program& program, int first, int last)
{
    Form1& form1 = program.form1;
    if (!form1.dbresult) return;
    const bool is_older = !sheet_wanted(program, docket_command_text);
    const auto older_template = long_older_list(program) ? files::older_long_docket : files::older_docket;
    SpreadsheetTask task(program, is_older ? installed(program, older_template) : docket_template(program));
    form1.batchgate = false;
    write_list(program, task.sheet(), is_older ? 13 : 12, first, last);
    (is_older ? write_older_head : write_head)(program, task.sheet());

    const Text receipt = first_field(program, receipt_column);
    const auto return_number = look_up_return_number(program);
    if (return_number) task.sheet().set_cell(is_older ? 9 : 8, 6, *return_number);
    const Text number = return_number.value_or(Text());
    if (is_older) { // it lies in the output folder itself
        task.save_as(plain_sheet_path(program, receipt + U"-" + number + U".xlsx"));
        task.finish(Changes::Save);
        ++program.run.older_layouts;
    } else
        save_sheet(program, task, docket_command_text,
                   {first_field(program, folder_column), {marked_for_length(program, receipt), number}});
    close_sheet(program);
}

constexpr ReportCommand docket_command{
    .text = docket_command_text,
    .question = excel_question,
    .report = U"3139",
    .question_tail = U"在此目录下，还应有，更名为3137.txt，3138.txt的辅助数据表文件。",
    .key = U"4900",
    .key_column = receipt_column,
    .sheets = {.timer = &Form1::Timer3,
               .scan = count_devices,
               .prepare = prepare_docket,
               .sheet = [](Program& program) { excecopy(program, 4, 7); }},
};

namespace {

// "An testdocket", with the cells of a design

constexpr std::u32string_view test_command_text = U"An testdocket";

// Columns of the reports.
constexpr std::size_t design_receipt_column = 16;
constexpr std::size_t design_return_number_column = 17;
constexpr std::size_t design_contact_column = 19;
constexpr std::size_t design_folder_column = 24;

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
    if (!key_gets_sheet(program, test_command_text)) return;
    SpreadsheetTask task(program, docket_template(program));
    program.form1.batchgate = false;
    write_design(program, task.sheet());
    write_device_counts(program, task.sheet());
    task.sheet().set_cell(8, 2, contact(program, design_contact_column));
    const Text receipt = marked_for_length(program, first_field(program, design_receipt_column));
    save_sheet(
        program, task, test_command_text,
        {first_field(program, design_folder_column), {receipt, first_field(program, design_return_number_column)}});
    close_sheet(program);
}

constexpr ReportCommand test_docket_command{
    .text = test_command_text,
    .design = files::design_a,
    .key_column = design_column,
    .sheets = {.timer = &Form1::Timer4, .scan = count_devices, .prepare = prepare_docket, .sheet = excecopys},
};

} // namespace tarvik
