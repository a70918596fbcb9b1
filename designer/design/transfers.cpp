#include "designer/design/transfers.h"

#include "designer/design/design.h"

namespace tarvik {

namespace {

constexpr int last_static = 26;
constexpr int first_row_box = 28; // of the dynamic block
constexpr int first_dynamic = 29, last_dynamic = 49;

using Write = std::function<void(const DesignWrite&)>;

void write_element(const Program& program, int i, int j, const Write& write, DesignWrite place)
{
    const TextView element = own_element(program, i, j);
    if (element.empty()) return;
    place.text = upper(element);
    write(place);
}

void static_transfer(const Program& program, const Write& write)
{
    const Form4& form4 = program.form4;
    for (int box = 0; box <= last_static; box += 2) {
        const auto row = design_number(form4.Text1[box]), column = design_number(form4.Text1[box + 1]);
        const auto i = design_number(form4.Text2[box]), j = design_number(form4.Text2[box + 1]);
        if (row > 0 && column > 0 && i >= 0 && j >= 0)
            write_element(program, *i, *j, write, {*row, *column, {}, box + 1});
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
    for (int i = 0; i < program.form1.rowcount && !columns.empty(); ++i)
        for (const DynamicColumn& column : columns)
            write_element(program, i, column.j, write, {first_row + i, column.column, {}, column.box});
}

} // namespace

TextView own_element(const Program& program, int row, int column)
{
    if (row < 0 || row >= program.form1.rowcount || column < 0) return {};
    return program.module1.suf.cell(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
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
