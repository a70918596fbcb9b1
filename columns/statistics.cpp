#include "columns/columns.h"

#include "columns/views.h"
#include "platform/text/text_index.h"

#include <algorithm>

namespace tarvik {

namespace {

/// A value's count stands at its first row, 0 at the others; the working copy is used up by the count.
void leave_counts(TextArray& distinctn, std::size_t rows, const Statistic& statistic)
{
    Text numbers = U"0";
    for (const Count& value : statistic.counts) numbers += number_text(value.count);
    const SharedBuffer buffer = make_buffer(numbers);
    distinctn.keep({buffer});
    for (std::size_t row = 0; row < rows; ++row) distinctn.set_view(row, buffer->view().substr(0, 1));
    std::size_t start = 1;
    for (const Count& value : statistic.counts) {
        const std::size_t length = number_text(value.count).size();
        distinctn.set_view(value.first_row, buffer->view().substr(start, length));
        start += length;
    }
}

/// Each cell is looked at once: with other rows between, it is far from the processor again.
Statistic count_column(Program& program, std::size_t column)
{
    Module1& arrays = program.module1;
    const auto rows = static_cast<std::size_t>(program.form1.curcount);
    Statistic statistic;
    TextIndex values;
    for (TextArray* array : {&arrays.distinct, &arrays.distinctn, &arrays.colcopy}) array->clear(0, array->last());
    arrays.distinct.keep(arrays.suf.buffers());
    for (std::size_t row = 0; row < rows; ++row) {
        const TextView cell = arrays.suf.cell(row, column);
        arrays.distinct.set_view(row, cell);
        if (cell.empty()) continue;
        const auto [number, is_new] = values.insert(cell);
        if (is_new) statistic.counts.push_back({cell, 0, row});
        statistic.counts[number].count += 1;
        statistic.total += 1;
    }
    leave_counts(arrays.distinctn, rows, statistic);
    return statistic;
}

void fill_keylist(Program& program, const Statistic& statistic)
{
    TextArray& keylist = program.module1.keylist;
    const std::size_t room = keylist.last() + 1;
    keylist.clear(0, keylist.last());
    keylist.keep(program.module1.suf.buffers());
    const std::size_t kept = std::min(statistic.counts.size(), room);
    for (std::size_t key = 0; key < kept; ++key) keylist.set_view(key, statistic.counts[key].value);
    program.form1.keycount = static_cast<int>(kept);
    if (kept < statistic.counts.size())
        tell(program, U" 请注意：\r\n关键字共有 " + number_text(statistic.counts.size()) +
                          U" 个，已经超过软件所设定的阀值：10001个，只保留前10001个。");
}

} // namespace

void column_statistics(Program& program)
{
    Form1& form1 = program.form1;
    const std::size_t column = form1.comp ? 0 : box_column(program, 5);
    form1.RichTextBox3.set_text({});
    if (form1.comp) {
        tell(program, U" 温情提示：\r\n请先将comp设置为FALSE（按键e），然后进行单表之内的排序或统计。", U"Tarvik 计算",
             Icon::Information);
        return;
    }
    tell(program, U" 温情提示：\r\n参与排序或者统计的suF表的列次为:" + number_text(column) + U"。", U"Tarvik 计算 ");
    const Statistic statistic = count_column(program, column);
    ScratchFile file(program, statistics_file);
    show_statistic(program, file, statistic);
}

void show_statistic(Program& program, ScratchFile& file, const Statistic& statistic)
{
    const auto view = std::make_shared<RowView>(program.module1.suf.buffers());
    for (const Count& value : statistic.counts)
        view->add_cell(U"\t", value.value, U"\t\t\t" + number_text(value.count) + U"\t");
    show_view(program, file, view);
    program.form1.RichTextBox3.append(U"\t合计:\t\t\t" + number_text(statistic.total) + U"\t\r\n");
}

std::optional<Statistic> count_for_command(Program& program, int column)
{
    const std::size_t checked = checked_column(column);
    if (!program.form1.dbresult) return std::nullopt;
    program.form1.RichTextBox3.set_text({});
    if (program.form1.comp) return std::nullopt;
    return count_column(program, checked);
}

void statistitt(Program& program, int column)
{
    const auto statistic = count_for_command(program, column);
    if (!statistic) return;
    ScratchFile file(program, statistics_file);
    fill_keylist(program, *statistic);
    show_statistic(program, file, *statistic);
}

} // namespace tarvik
