#include "dockets/repair_docket.h"

#include "columns/table.h"
#include "mainwindow/installation_files.h"
#include "office/blanking.h"
#include "office/keyed_scans.h"
#include "office/sheet_path.h"
#include "office/tasks.h"

namespace tarvik {

namespace {

constexpr std::u32string_view command_text = U"An docket";
constexpr std::u32string_view between_names = U"     "; // contact person and telephone

// Columns of the reports.
constexpr int receipt_column = 3;
constexpr std::size_t order_key_column = 4;
constexpr std::size_t folder_column = 7;
constexpr std::size_t customer_column = 8;
constexpr std::size_t contact_column = 9;
constexpr std::size_t telephone_column = 10;
constexpr std::size_t return_number_column = 12;
constexpr std::size_t order_key_start = 4; // character of the order key's field

struct Cell {
    int row, column;
};

/// A template for short lists and one for longer ones, and where what is written goes.
struct Layout {
    std::u32string_view short_template, long_template;
    double short_list; ///< lines that the short template holds
    int first_list_row;
    Cell return_number;
    void (*head)(const Program& program, Worksheet& sheet, bool long_list);
};

Text field(const Program& program, std::size_t column)
{
    return program.module1.suf.cell(0, column).str();
}

Text contact(const Program& program)
{
    return field(program, contact_column) + Text(between_names) + field(program, telephone_column);
}

void write_head(const Program& program, Worksheet& sheet, bool)
{
    const Form1& form1 = program.form1;
    sheet.set_cell(7, 2, field(program, customer_column));
    sheet.set_cell(8, 2, contact(program));
    sheet.set_cell(9, 2, field(program, receipt_column));
    sheet.set_cell(10, 2, form1.allcount);
    sheet.set_cell(10, 5, form1.allcount - form1.partcount);
    sheet.set_cell(10, 7, form1.partcount);
}

// The older layout tells label and value in one cell.
void write_older_head(const Program& program, Worksheet& sheet, bool long_list)
{
    const Form1& form1 = program.form1;
    sheet.set_cell(8, 1, U"客户名称： " + field(program, customer_column));
    sheet.set_cell(9, 1, U"客户联系人及电话:" + contact(program));
    sheet.set_cell(10, 1, U"收货凭证号:" + field(program, receipt_column));
    sheet.set_cell(11, 1,
                   U"返修总台数     " + number_text(form1.allcount) + U"     保内台数     " +
                       number_text(form1.allcount - form1.partcount) + U"     保外台数" + U"    " +
                       number_text(form1.partcount));
    sheet.set_cell(long_list ? 81 : 59, 1, U"总金额:             ");
}

constexpr Layout docket_layout{files::docket, files::long_docket, 33, 12, {8, 6}, write_head};
constexpr Layout older_layout{files::older_docket, files::older_long_docket, 45, 13, {9, 6}, write_older_head};
constexpr double marked_list = 68; // a longer list of the long template is marked in the file's name
constexpr std::u32string_view long_list_mark = U"陈默然";

void write_list(const Program& program, Worksheet& sheet, int row, int first, int last)
{
    const auto records = static_cast<std::size_t>(std::max(0.0, program.form1.recordcount));
    for (std::size_t i = 0; i < records; ++i, ++row)
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
    return field(program, return_number_column);
}

struct NameParts {
    Text receipt, return_number;
};

// Where the docket is saved; empty when it makes no file of its own.
Text docket_path(Program& program, bool own_layout, const NameParts& names)
{
    if (!own_layout) return plain_sheet_path(program, names.receipt + U"-" + names.return_number + U".xlsx");
    if (!command_leads(program, command_text)) return {};
    return sheet_path(program, {field(program, folder_column), {names.receipt, names.return_number}});
}

} // namespace

void excecopy(Program& program, int first, int last)
{
    Form1& form1 = program.form1;
    if (!form1.dbresult) return;
    const bool own_layout = TextView(form1.query_box().text()).contains(command_text);
    const Layout& layout = own_layout ? docket_layout : older_layout;
    const bool long_list = form1.partcount > layout.short_list;

    SpreadsheetTask task(program, installed(program, long_list ? layout.long_template : layout.short_template), true);
    form1.batchgate = false;
    write_list(program, task.sheet(), layout.first_list_row, first, last);
    layout.head(program, task.sheet(), long_list);

    NameParts names{field(program, receipt_column), {}};
    if (own_layout && long_list && form1.partcount > marked_list) names.receipt += long_list_mark;
    if (const auto return_number = look_up_return_number(program)) {
        names.return_number = *return_number;
        task.sheet().set_cell(layout.return_number.row, layout.return_number.column, *return_number);
    }

    // A docket without a file of its own is dropped: saving it would fill the template for good.
    const Text path = docket_path(program, own_layout, names);
    if (!path.empty()) task.save_as(path);
    task.finish(path.empty() ? Changes::Discard : Changes::Save);
    close_sheet(program);
}

const ReportCommand& docket_command()
{
    static constexpr ReportCommand row{
        .text = command_text,
        .question = excel_question,
        .report = U"3139",
        .question_tail = U"在此目录下，还应有，更名为3137.txt，3138.txt的辅助数据表文件。",
        .key = U"4900",
        .key_column = receipt_column,
        .timer = &Form1::Timer3,
    };
    return row;
}

const SheetFamily& docket_family()
{
    static constexpr SheetFamily family{
        .timer = &Form1::Timer3,
        .scan =
            [](Program& program, TextView key) {
                program.form1.allcount = query2(program, key, true);
                program.form1.partcount = query2(program, key, false);
            },
        .prepare =
            [](Program& program) {
                devision1(program);
                excelce2(program);
            },
        .sheet = [](Program& program) { excecopy(program, 4, 7); },
    };
    return family;
}

} // namespace tarvik
