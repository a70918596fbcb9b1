#include "lists/lists.h"

#include "columns/columns.h"
#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"
#include "runs/folder_walk.h"
#include "runs/keyed_scans.h"
#include "runs/sheets.h"

#include <algorithm>
#include <unordered_map>

namespace tarvik {

namespace {

constexpr std::u32string_view label_filter = U"excel2007文件*.xls|*.xls|excel2010文件*.xlsx|*.xlsx";
constexpr std::u32string_view first_key = U"z1", second_key = U"z6"; // pick the lines of the two blocks
constexpr int model_column = 15, part_column = 9;                    // of SUF
constexpr int first_row = 5;                                         // of the sheet
constexpr int part_cell = 1, model_cell = 2, count_cell = 4;         // columns of the sheet

/// The statistics of a column of SUF, shown without a message and written into the first sheet of z1.xlsx: each value
/// in upper case from `row` down in column `sheetcol`, its count as text in `counts_column`. Gives the row behind the
/// last one, which `sheetrow` keeps too. Nothing happens before the first column query or while `comp` is True.
int statistics(Program& program, int column, int row, int sheetcol, int counts_column)
{
    const auto statistic = count_for_command(program, column);
    if (!statistic) return row;
    ScratchFile file(program, statistics_file);
    SpreadsheetTask task(program, installed(program, files::label_list));
    for (const Count& value : statistic->counts) {
        task.sheet().set_cell(row, sheetcol, upper(value.value));
        task.sheet().set_cell(row++, counts_column, number_text(value.count));
    }
    task.finish(Changes::Save);
    program.form1.sheetrow = row;
    show_statistic(program, file, *statistic);
    return row;
}

void excelsaveas(Program& program)
{
    SpreadsheetTask task(program, installed(program, files::label_list));
    const Text date = date_text(program.platform.clock.now());
    task.save_as(plain_sheet_path(program, date + U"-陈默然.xlsx"));
    task.finish(Changes::Save);
}

// The table's lines counted by model and by part, from these rows down; gives the rows behind the last ones.
struct Marks {
    int models, parts;
};

Marks write_block(Program& program, Marks rows, int counts_column)
{
    return {statistics(program, model_column, rows.models, model_cell, counts_column),
            statistics(program, part_column, rows.parts, part_cell, counts_column)};
}

void load_second_report(Program& program)
{
    Form1& form1 = program.form1;
    Document document = load_document(program, installed(program, files::report_labels));
    if (!document.empty()) form1.RichTextBox2.set_content(PaneText(std::move(document)));
}

void an_label(Program& program)
{
    Form1& form1 = program.form1;
    blank_template(program, files::label_list, first_row, 500);
    const Marks first = write_block(program, {first_row, first_row}, count_cell - 1);
    form1.z1end = first.models;
    form1.z1end2 = first.parts;
    load_second_report(program);
    checked_scan(program, second_key);
    devision1(program);
    form1.z6end = write_block(program, first, count_cell).models;
    excel1(program);
    excelsaveas(program);
}

void empty_cells(Worksheet& sheet, int row)
{
    for (const int column : {part_cell, model_cell, count_cell}) sheet.set_cell(row, column, Text());
}

// Gives the row the count of the last of the others, which are emptied.
void take_count(Worksheet& sheet, int row, const std::vector<int>& others)
{
    if (others.empty()) return;
    sheet.set_cell(row, count_cell, sheet.value(others.back(), count_cell));
    for (const int other : others) empty_cells(sheet, other);
}

void move_counts(const Program& program, Worksheet& sheet)
{
    const int first_end = program.form1.z1end, second_end = program.form1.z6end;
    std::unordered_map<Text, std::vector<int>> rows; // of the second block by their first column, each in its order
    for (int row = first_end; row < second_end; ++row) rows[sheet.cell(row, part_cell)].push_back(row);
    int last_emptied = 0; // rows emptied before count among those with an empty first column
    for (int row = first_row; row < first_end; ++row) {
        const Text part = sheet.cell(row, part_cell);
        const auto found = rows.find(part);
        const std::vector<int> others = found == rows.end() ? std::vector<int>() : found->second;
        if (found != rows.end()) rows.erase(found);
        take_count(sheet, row, others);
        const int last = others.empty() ? 0 : others.back();
        if (part.empty() && last_emptied > last) sheet.set_cell(row, count_cell, Text());
        last_emptied = std::max(last_emptied, last);
    }
}

} // namespace

void list_characters(Program& program)
{
    constexpr std::size_t bytes_at_once = std::size_t{1} << 20;
    const Document document = program.form1.RichTextBox2.document();
    const auto file = program.platform.files.begin_replacement(installed(program, files::character_list));
    // The list is some eight times as long as the text: it never stands in memory as a whole.
    std::string records;
    document.text().visit([&](auto characters) {
        std::size_t number = 0;
        for (const char32_t character : characters) {
            encode_to({&character, 1}, records);
            records.append("\t*").append(std::to_string(++number)).append("\r\r\n");
            if (records.size() < bytes_at_once) continue;
            file->write(records);
            records.clear();
        }
    });
    file->write(records);
    file->take_place();
    program.notice = U"字符清单已存为安装目录中的 " + Text(files::character_list);
}

void excel1(Program& program)
{
    SpreadsheetTask task(program);
    const auto picked = pick_file(program, label_filter);
    if (picked) {
        task.open(picked->folder + picked->name);
        move_counts(program, task.sheet());
    }
    task.finish(Changes::Save);
}

constexpr ReportCommand label_command{.text = U"An label", .key = first_key, .run = an_label};

} // namespace tarvik
