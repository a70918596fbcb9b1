#include "designer/design/transfers.h"

#include "columns/split_line.h"
#include "designer/design/design.h"

namespace tarvik {

namespace {

constexpr int last_static = 26;
constexpr int first_row_box = 28; // of the dynamic block
constexpr int first_dynamic = 29, last_dynamic = 49;

using Write = std::function<void(const DesignWrite&)>;

void write_element(OwnElements& elements, int i, int j, const Write& write, DesignWrite place)
{
    const TextView element = elements(i, j);
    if (element.empty()) return;
    place.text = upper(element);
    write(place);
}

void static_transfer(const Program& program, const Write& write)
{
    const Form4& form4 = program.form4;
    OwnElements elements(program);
    for (int box = 0; box <= last_static; box += 2) {
        const auto row = design_number(form4.Text1[box]), column = design_number(form4.Text1[box + 1]);
        const auto i = design_number(form4.Text2[box]), j = design_number(form4.Text2[box + 1]);
        if (row > 0 && column > 0 && i >= 0 && j >= 0)
            write_element(elements, *i, *j, write, {*row, *column, {}, box + 1});
    }
}

struct DynamicColumn {
    int box, column, j;
};

// Every box from the first on is a column, whatever pairs the window shows.
std::vector<DynamicColumn> dynamic_columns(const Form4& form4)
{
    std::vector<DynamicColumn> columns;
    for (int box = first_dynamic; box <= last_dynamic; ++box) {
        const auto column = design_number(form4.Text1[box]), j = design_number(form4.Text2[box]);
        if (column > 0 && j > 0) columns.push_back({box, *column, *j});
    }
    return columns;
}

void dynamic_transfer(const Program& program, const Write& write)
{
    const int first_row = design_number(program.form4.Text1[first_row_box]).value_or(0);
    if (first_row < 1) return;
    const std::vector<DynamicColumn> columns = dynamic_columns(program.form4);
    OwnElements elements(program);
    for (int i = 0; i < program.form1.rowcount && !columns.empty(); ++i)
        for (const DynamicColumn& column : columns)
            write_element(elements, i, column.j, write, {first_row + i, column.column, {}, column.box});
}

} // namespace

TextView OwnElements::operator()(int row, int column)
{
    const auto r = static_cast<std::size_t>(row), c = static_cast<std::size_t>(column);
    const RowTexts& lines = program_.module1.sufrow;
    if (row < 0 || row >= program_.form1.rowcount || column < 1) return {};
    if (row != row_) {
        row_ = row;
        width_ = 0;
        if (!lines.is_empty(r)) split_line(lines.line(r), [this](auto...) { ++width_; });
    }
    return column <= width_ ? program_.module1.suf.cell(r, c) : TextView();
}

void transfer(const Program& program, const Write& write)
{
    static_transfer(program, write);
    dynamic_transfer(program, write);
}

void transfer(const Program& program, Worksheet& sheet)
{
    transfer(program, [&sheet](const DesignWrite& cell) { sheet.set_cell(cell.row, cell.column, cell.text); });
}

} // namespace tarvik
