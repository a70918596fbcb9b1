#include "columns/comparisons.h"

#include "columns/boxes.h"
#include "columns/views.h"

#include <algorithm>

namespace tarvik {

namespace {

/// The piece of a field that the boxes bound; both bounds count from 1 and belong to it.
TextView bounded_piece(Program& program, TextView field)
{
    Form1& form1 = program.form1;
    form1.fieldfrom = box_position(program, 1, 1);
    form1.fieldto = box_number(program, 2);
    if (form1.fieldto < form1.fieldfrom || form1.fieldfrom > static_cast<double>(field.size())) return {};
    const double length = std::min(form1.fieldto - form1.fieldfrom + 1, static_cast<double>(field.size()));
    return mid(field, static_cast<std::size_t>(form1.fieldfrom), static_cast<std::size_t>(length));
}

} // namespace

void field_query(Program& program, ComparisonFiles& files)
{
    Form1& form1 = program.form1;
    const Text needle = lower(ltrim(form1.query_box().text()));
    const std::size_t column = box_column(program, 0);
    tell(program, U" 温情提示：\r\n参与字段内查寻的suF表的列次为:" + number_text(column) + U"。", U"Tarvik  计算查寻 ");
    const Module1& arrays = program.module1;
    const auto view = std::make_shared<RowView>(arrays.sufrow.buffers());
    view->keep(arrays.suf.buffers());
    const auto last = static_cast<std::size_t>(form1.curcount);
    for (std::size_t row = 0; row <= last; ++row) {
        const TextView field = ltrim(arrays.suf.cell(row, column)); // in small letters, as every cell
        if (instr(field, needle) == 0) continue;
        view->add_row(arrays.sufrow.line(row), U"\t", bounded_piece(program, field));
    }
    show_view(program, files[ComparisonFiles::between5], view);
    form1.number_box().set_text(number_text(view->line_count()));
}

} // namespace tarvik
