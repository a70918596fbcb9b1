#include "dockets/dockets.h"

#include "calendar/calendar.h"
#include "dockets/sheet_parts.h"
#include "mainwindow/installation_files.h"
#include "platform/files/paths.h"
#include "runs/keyed_scans.h"

namespace tarvik {

namespace {

constexpr std::u32string_view command_text = U"An dockword";
constexpr std::u32string_view printing_text = U"An dockwordp";

// Columns of 3158.txt
constexpr std::size_t folder_column = 14;
constexpr int device_column = 15;

constexpr Cell picture_cell{9, 1};

Text department(TextView)
{
    return U"维修服务部";
}

Text cause(TextView text)
{
    return U"故障申报：此设备由于以下原因导致无法维修，建议报废。\r\n        ：" + text;
}

Text finding(TextView text)
{
    return U"检测结果（必要时附照片)\r\n        " + text;
}

constexpr CellItem items[] = {
    {.cell = {1, 2}, .field = 5},
    {.cell = {1, 6}, .field = 18, .shape = first_word},
    {.cell = {9, 6}, .field = 22},
    {.cell = {9, 4}, .field = 29},
    {.cell = {9, 2}, .field = device_column, .shape = department},
    {.cell = {2, 2}, .field = 3},
    {.cell = {10, 1}, .field = 33, .shape = finding},
    {.cell = {2, 6}, .field = 4, .shape = telecall},
    {.cell = {5, 1}, .field = 9, .shape = upper},
    {.cell = {5, 2}, .field = 10, .shape = upper},
    {.cell = {5, 3}, .field = device_column, .shape = upper},
    {.cell = {5, 4}, .field = 35, .shape = upper},
};
constexpr CellItem cause_items[] = {{.cell = {6, 1}, .field = 30, .shape = cause}};

Text template_for(const Program& program, bool first_flag, bool second_flag)
{
    if (first_flag) return installed(program, second_flag ? files::repair_report_1 : files::repair_report_3);
    return installed(program, second_flag ? files::repair_report_2 : files::repair_report_5);
}

/// A device without a picture keeps what the template has in its place.
void add_picture(Program& program, TextDocument& document, const Text& device)
{
    const Text path = installed(program, Text(files::pictures) + U"\\" + safe_name_part(device) + U".jpg");
    if (program.platform.files.file_exists(path)) document.add_picture(picture_cell.row, picture_cell.column, path);
}

void find_device(Program& program, TextView key)
{
    if (!program.form1.query_box().text().empty() &&
        !no_option_selected(program.form1)) // the table holds another device
        throw Failure(U" 请注意：\r\n选中了查寻选项，数据列查寻没有进行，运行已经停止；请先点击窗口空白处还原默认，再重"
                      U"新输入命令。");
    program.form1.partcount = query5(program, key, true);
}

} // namespace

void excecopyword(Program& program, bool first_flag, bool second_flag)
{
    if (!key_gets_sheet(program, command_text)) return;
    DocumentTask task(program, template_for(program, first_flag, second_flag));
    program.form1.batchgate = false;
    const auto write = [&task](const Cell& cell, const Text& text) {
        task.document().set_cell_text(cell.row, cell.column, text);
    };
    write_items(program, items, write);
    if (!first_flag && !second_flag) write_items(program, cause_items, write);

    const Text device = first_field(program, device_column);
    add_picture(program, task.document(), device);
    if (saves_sheets(program, command_text))
        task.save_as(sheet_path(
            program, {.folder_text = first_field(program, folder_column), .parts = {device}, .extension = U".doc"}));
    if (TextView(program.form1.query_box().text()) == TextView(printing_text)) task.document().print_out();
    task.finish();
    close_sheet(program);
}

constexpr ReportCommand repair_report_command{
    .text = command_text,
    .question = word_question,
    .report = U"3158",
    .key = U"不可修复",
    .key_column = device_column,
    // A device that the report no longer holds gets a sheet all the same, of the row that stands in the table.
    .sheets = {.timer = &Form1::Timer5,
               .scan = find_device,
               .needs_records = false,
               .sheet = [](Program& program) { excecopyword(program, true, true); }},
};

} // namespace tarvik
