#include "designer/design/design.h"

#include "platform/text/code_page.h"

#include <cmath>

namespace tarvik {

namespace {

constexpr char32_t asterisk = U'*';
constexpr double largest_number = 1e9; // far above every row, and an int holds it

bool is_space(char32_t character)
{
    return character == U' ' || character == U'\t' || character == U'\r' || character == U'\n';
}

TextView without_spaces(TextView text)
{
    while (!text.empty() && is_space(text[0])) text = text.substr(1);
    while (!text.empty() && is_space(text[text.size() - 1])) text = text.substr(0, text.size() - 1);
    return text;
}

constexpr int first_row_box = Form4::first_dynamic, first_column_box = first_row_box + 1;

} // namespace

void Opensesame(Form4& form4, TextView line)
{
    const std::vector<TextBox*> boxes = form4.design_boxes();
    if (const std::size_t last = line.rfind(asterisk); last != npos)
        form4.load(*boxes.back(), line.substr(last + 1).str());
    std::size_t start = 0;
    std::size_t end = line.find(asterisk); // the first field alone may be empty
    for (std::size_t i = 0; i + 1 < boxes.size() && end != npos; ++i) {
        form4.load(*boxes[i], line.substr(start, end - start).str());
        start = end + 1;
        end = line.find(asterisk, start + 1);
    }
}

Text design_line(Form4& form4)
{
    Text line;
    for (const TextBox* box : form4.design_boxes()) line += box->text() + asterisk;
    line.pop_back();
    return line + U"\r\n";
}

bool load_design(Program& program, TextView file)
{
    const Files& files = program.platform.files;
    const Text path = installed(program, file);
    if (!files.file_exists(path)) return false;
    const Document line = decode_own(files.read(path));
    Opensesame(program.form4, line.text());
    return true;
}

std::optional<int> design_number(const TextBox& box)
{
    const auto value = number(without_spaces(box.text()));
    if (!value || *value != std::floor(*value) || std::abs(*value) > largest_number) return std::nullopt;
    return static_cast<int>(*value);
}

Text design_row_name(int index)
{
    const bool dynamic = index >= Form4::first_dynamic;
    return (dynamic ? U"动态 第" : U"静态 第") + number_text((dynamic ? index - Form4::first_dynamic : index) / 2 + 1) +
           U"行";
}

int design_key_column(const Program& program)
{
    const auto column = design_number(program.form4.Text4);
    if (!column || *column < 0 || *column > static_cast<int>(Table::last_column))
        throw Failure(U" 请注意：\r\n报表设计器“1”框（关键字段所在的列）应是0至180之间的整数，报表没有开始。");
    return *column;
}

TextView own_element(const Program& program, int row, int column)
{
    if (row < 0 || row >= program.form1.rowcount || column < 0) return {};
    return program.module1.suf.cell(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
}

void write_static_rows(const Form4& form4, const Elements& elements, const DesignWriter& write)
{
    for (int box = 0; box < Form4::first_dynamic; box += 2) {
        const auto row = design_number(form4.Text1[box]), column = design_number(form4.Text1[box + 1]);
        const auto i = design_number(form4.Text2[box]), j = design_number(form4.Text2[box + 1]);
        if (!(row > 0 && column > 0 && i >= 0 && j >= 0)) continue;
        const TextView text = elements.text(*i, *j);
        if (!text.empty()) write({*row, *column, text, box});
    }
}

void write_dynamic_rows(const Form4& form4, const Elements& elements, int first_row, const DesignWriter& write)
{
    struct Column {
        int box, column, j;
    };
    std::vector<Column> columns; // every box from the first on is one, whatever pairs the window shows
    for (int box = first_column_box; box <= Form4::last_box; ++box) {
        const auto column = design_number(form4.Text1[box]), j = design_number(form4.Text2[box]);
        if (column > 0 && j > 0) columns.push_back({box, *column, *j});
    }
    for (int i = 0; i < elements.rows && !columns.empty(); ++i)
        for (const auto& [box, column, j] : columns)
            if (const TextView text = elements.text(i, j); !text.empty()) write({first_row + i, column, text, box});
}

void transfer(const Form4& form4, const Elements& elements, const DesignWriter& write)
{
    write_static_rows(form4, elements, write);
    const int first_row = design_number(form4.Text1[first_row_box]).value_or(0);
    if (first_row >= 1) write_dynamic_rows(form4, elements, first_row, write);
}

void transfer(const Program& program, Worksheet& sheet)
{
    const Elements elements{[&program](int row, int column) { return own_element(program, row, column); },
                            program.form1.rowcount};
    transfer(program.form4, elements,
             [&sheet](const DesignWrite& cell) { sheet.set_cell(cell.row, cell.column, upper(cell.text)); });
}

} // namespace tarvik
