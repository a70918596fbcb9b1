#include "mainwindow/table.h"

#include <algorithm>

namespace tarvik {

Text RowTexts::text(std::size_t row) const
{
    const TextView line = lines_.get(row);
    if (!line.has_storage()) return {};
    Text text = U"\t";
    line.append_to(text);
    text += U'\t';
    return text;
}

void RowTexts::set_line(std::size_t row, TextView line, const SharedBuffer& buffer)
{
    if (keeper_.wants_sweep()) keeper_.sweep([this](const auto& see) { lines_.for_each_used(see); });
    keeper_.keep(buffer);
    lines_.set(row, line.has_storage() ? line : TextView(U""));
}

void RowTexts::swap(std::size_t a, std::size_t b)
{
    const TextView line = lines_.get(a);
    lines_.set(a, lines_.get(b));
    lines_.set(b, line);
}

Table::Table()
{
    columns_.reserve(last_column + 1);
    for (std::size_t column = 0; column <= last_column; ++column) columns_.emplace_back(last_row);
}

void Table::set_cell(std::size_t row, std::size_t column, TextView text)
{
    if (column > last_column) throw Failure(U"数据超出软件所设定的数组范围。");
    if (text.empty()) {
        columns_[column].set(row, {});
        return;
    }
    const SharedBuffer buffer = make_buffer(text);
    keep({buffer});
    columns_[column].set(row, buffer->view());
}

void Table::keep(const std::vector<SharedBuffer>& buffers)
{
    if (keeper_.wants_sweep())
        keeper_.sweep([this](const auto& see) {
            for (const auto& column : columns_) column.for_each_used(see);
        });
    for (const SharedBuffer& buffer : buffers) keeper_.keep(buffer);
}

void Table::clear(std::size_t from_row, std::size_t to_row, std::size_t from_column, std::size_t to_column)
{
    for (std::size_t column = from_column; column <= std::min(to_column, last_column); ++column)
        columns_[column].clear(from_row, to_row);
}

void Table::swap_cells(std::size_t column, std::size_t row_a, std::size_t row_b)
{
    const TextView cell = columns_[column].get(row_a);
    columns_[column].set(row_a, columns_[column].get(row_b));
    columns_[column].set(row_b, cell);
}

} // namespace tarvik
