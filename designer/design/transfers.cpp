#include "designer/design/transfers.h"

#include "designer/design/design.h"

namespace tarvik {

namespace {

constexpr int first_row_box = Form4::first_dynamic, first_column_box = first_row_box + 1;

using Write = std::function<void(const DesignWrite&)>;

void write_element(const Elements& elements, int i, int j, const Write& write, DesignWrite place)
{
    const TextView element = elements.text(i, j);
    if (element.empty()) return;
    place.text = upper(element);
    write(place);
}

void static_transfer(const Form4& form4, const Elements& elements, const Write& write)
{
    for (int box = 0; box < Form4::first_dynamic; box += 2) {
        const auto row = design_number(form4.Text1[box]), column = design_number(form4.Text1[box + 1]);
        const auto i = design_number(form4.Text2[box]), j = design_number(form4.Text2[box + 1]);
        if (row > 0 && column > 0 && i >= 0 && j >= 0) write_element(elements, *i, *j, write, {*row, *column, {}, box});
    }
}

struct DynamicColumn {
    int box, column, j;
};

// Every box from the first on is a column, whatever pairs the window shows.
std::vector<DynamicColumn> dynamic_columns(const Form4& form4)
{
    std::vector<DynamicColumn> columns;
    for (int box = first_column_box; box <= Form4::last_box; ++box) {
        const auto column = design_number(form4.Text1[box]), j = design_number(form4.Text2[box]);
        if (column > 0 && j > 0) columns.push_back({box, *column, *j});
    }
    return columns;
}

void dynamic_transfer(const Form4& form4, const Elements& elements, const Write& write)
{
    const int first_row = design_number(form4.Text1[first_row_box]).value_or(0);
    if (first_row < 1) return;
    const std::vector<DynamicColumn> columns = dynamic_columns(form4);
    for (int i = 0; i < elements.rows && !columns.empty(); ++i)
        for (const DynamicColumn& column : columns)
            write_element(elements, i, column.j, write, {first_row + i, column.column, {}, column.box});
}

} // namespace

TextView own_element(const Program& program, int row, int column)
{
    if (row < 0 || row >= program.form1.rowcount || column < 0) return {};
    return program.module1.suf.cell(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
}

void transfer(const Form4& form4, const Elements& elements, const Write& write)
{
    static_transfer(form4, elements, write);
    dynamic_transfer(form4, elements, write);
}

void transfer(const Program& program, Worksheet& sheet)
{
    const Elements elements{[&program](int row, int column) { return own_element(program, row, column); },
                            program.form1.rowcount};
    transfer(program.form4, elements,
             [&sheet](const DesignWrite& cell) { sheet.set_cell(cell.row, cell.column, cell.text); });
}

} // namespace tarvik
