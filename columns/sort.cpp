#include "columns/sort.h"

#include "columns/boxes.h"
#include "columns/prefetch.h"
#include "columns/views.h"

namespace tarvik {

namespace {

std::size_t filled_rows(const RowTexts& rows, std::size_t count)
{
    std::size_t filled = 0;
    for (std::size_t row = 0; row < count; ++row)
        if (!rows.is_empty(row)) ++filled;
    return filled;
}

void sort_by_column(Module1& arrays, std::size_t column, std::size_t last_row)
{
    std::vector<double> keys;
    keys.reserve(last_row + 1);
    for (std::size_t row = 0; row <= last_row; ++row) {
        arrays.suf.prefetch(row + prefetch_ahead, column);
        keys.push_back(sunnum(arrays.suf.cell(row, column)));
    }
    for (const Swap& swap : selection_swaps(keys)) {
        arrays.suf.swap_cells(column, swap.first, swap.second);
        arrays.sufrow.swap(swap.first, swap.second);
    }
}

} // namespace

void sort_rows(Program& program)
{
    Form1& form1 = program.form1;
    const std::size_t column = form1.comp ? 0 : box_column(program, 5);
    form1.RichTextBox3.set_text({});
    if (form1.comp) {
        tell(program, U" 温情提示：\r\n请先将comp设置为FALSE（按键e），然后进行单表之内的排序或统计。",
             U"Tarvik  计算查寻 ", Icon::Information);
        return;
    }
    ScratchFile file(program, U"between2.txt");
    tell(program, U" 温情提示：\r\n参与排序或者统计的suF表的列次为:" + number_text(column) + U"。", U"Tarvik 计算");
    const auto count = static_cast<std::size_t>(form1.sufcount);
    const RowTexts& rows = program.module1.sufrow;
    const std::size_t filled = filled_rows(rows, count);
    sort_by_column(program.module1, column, filled);
    const auto view = std::make_shared<RowView>(rows.buffers());
    for (std::size_t row = 0; row <= count; ++row)
        if (!rows.is_empty(row)) view->add_row(rows.line(row));
    show_view(program, file, view);
    form1.number_box().set_text(number_text(filled));
}

} // namespace tarvik
