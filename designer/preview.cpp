#include "designer/designer.h"

#include "columns/rows.h"
#include "designer/design/design.h"
#include "mainwindow/installation_files.h"
#include "runs/sheets.h"

#include <algorithm>
#include <unordered_set>

namespace tarvik {

namespace {

using Lines = std::vector<TextView>;

std::u32string_view ask_template(Program& program)
{
    const Answer answer = ask(program,
                              U"预览说明：选择YES按钮，代表按模板designerA.xlsx预览，选择NO按钮，"
                              U"代表按模板designerB.xlsx预览，选择Cancel按钮，代表不预览。",
                              U"Tarvik报表自动化设计", Buttons::YesNoCancel);
    if (answer == Answer::Yes) return files::designed_a;
    return answer == Answer::No ? std::u32string_view(files::designed_b) : std::u32string_view();
}

/// The lines of a document that hold the text, each once, where its last copy stands.
Lines lines_with(const Document& document, TextView text)
{
    const RowScan scan = scan_rows(document.lowered(), lower(ltrim(text)), Table::last_row);
    std::unordered_set<Text> seen;
    Lines lines;
    for (auto line = scan.rows.rbegin(); line != scan.rows.rend(); ++line)
        if (!line->empty() && seen.insert(line->str()).second) lines.push_back(*line);
    std::ranges::reverse(lines);
    return lines;
}

TextView field(TextView line, int column)
{
    TextView found;
    split_line(line, [&](std::size_t number, std::size_t start, std::size_t length) {
        if (number == static_cast<std::size_t>(column)) found = line.substr(start, length);
    });
    return found;
}

Text first_key(const Lines& lines, int column)
{
    for (const TextView line : lines)
        if (const TextView key = field(line, column); !key.empty()) return key.str();
    return {};
}

const PicturedCell* cell_at(const SheetPicture& picture, int row, int column)
{
    for (const PicturedCell& cell : picture.cells)
        if (row >= cell.row && row < cell.row + cell.rows && column >= cell.column &&
            column < cell.column + cell.columns)
            return &cell;
    return nullptr;
}

/// Writes the design's cells and gives the places.
std::vector<WrittenCell> fill(const Form4& form4, const Lines& lines, Worksheet& sheet)
{
    std::vector<WrittenCell> written;
    const Elements elements{[&lines](int row, int column) {
                                const auto r = static_cast<std::size_t>(row);
                                return r < lines.size() ? field(lines[r], column) : TextView();
                            },
                            static_cast<int>(lines.size())};
    transfer(form4, elements, [&](const DesignWrite& cell) {
        sheet.set_cell(cell.row, cell.column, upper(cell.text));
        written.push_back({cell.row, cell.column, design_row_name(cell.box)});
    });
    return written;
}

/// The cell's text as a preview shows it, or that it cannot be calculated, which keeps no other cell from being seen.
Text shown_text(const Worksheet& sheet, int row, int column)
try {
    constexpr std::size_t most_shown = 1000; // characters; thousands of cells may share a text without end
    return mid(sheet.cell(row, column), 1, most_shown).str();
} catch (const Failure&) {
    return U"无法计算";
}

SheetPreview preview_of(Worksheet& sheet, std::vector<WrittenCell> written)
{
    const auto* pictured = dynamic_cast<const PicturedSheet*>(&sheet);
    if (!pictured) throw Failure(U"所用的办公软件不能提供预览，请使用.xlsx格式的模板。");
    int rows = 1, columns = 1;
    for (const WrittenCell& cell : written) {
        rows = std::max(rows, cell.row);
        columns = std::max(columns, cell.column);
    }
    SheetPreview preview{pictured->picture(rows, columns), std::move(written)};
    for (WrittenCell& cell : preview.written) {
        const PicturedCell* const found = cell_at(preview.picture, cell.row, cell.column);
        if (found) cell = {found->row, found->column, cell.design_row};
        else if (static_cast<std::size_t>(cell.row) <= preview.picture.heights.size() &&
                 static_cast<std::size_t>(cell.column) <= preview.picture.widths.size())
            preview.picture.cells.push_back({.row = cell.row, .column = cell.column, .look = {}});
    }
    for (PicturedCell& cell : preview.picture.cells) cell.text = shown_text(sheet, cell.row, cell.column);
    return preview;
}

} // namespace

void Form4_Command3_Click(Program& program)
{
    const std::u32string_view file = ask_template(program);
    if (file.empty()) return;
    const int key_column = design_key_column(program);
    const Document document = program.form1.RichTextBox2.document();
    const Text key = first_key(lines_with(document, program.form4.Text3.text()), key_column);
    const Lines lines = key.empty() ? Lines() : lines_with(document, key);

    SpreadsheetTask task(program, installed(program, file));
    SheetPreview preview = preview_of(task.sheet(), fill(program.form4, lines, task.sheet()));
    task.finish(Changes::Discard);
    PreviewArea& area = program.form4.Preview;
    area.set_caption(U"预览：" + Text(file) + (key.empty() ? U"（打开的文档中没有符合条件的记录）" : U" ← " + key));
    area.show(std::move(preview));
}

void Form4_Preview_Click(Program& program)
{
    Form4& form4 = program.form4;
    if (!form4.focused_pair || form4.Preview.picked.row < 1) return;
    form4.Text1[*form4.focused_pair].set_text(number_text(form4.Preview.picked.row));
    form4.Text1[*form4.focused_pair + 1].set_text(number_text(form4.Preview.picked.column));
}

void Form4_GotFocus(Program& program, const Control& box)
{
    if (box.index() == no_index) program.form4.focused_pair.reset();
    else program.form4.focused_pair = box.index() / 2 * 2;
}

} // namespace tarvik
