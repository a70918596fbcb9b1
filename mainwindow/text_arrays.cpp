#include "mainwindow/text_arrays.h"

#include <algorithm>

namespace tarvik {

namespace {

const std::uint8_t* first_byte(const SharedBuffer& buffer)
{
    return static_cast<const std::uint8_t*>(buffer->view().data());
}

std::size_t bytes_of(const SharedBuffer& buffer)
{
    return buffer->view().size() * buffer->view().width();
}

const std::uint8_t* end_byte(const SharedBuffer& buffer)
{
    return first_byte(buffer) + bytes_of(buffer);
}

} // namespace

void BufferKeeper::keep(const SharedBuffer& buffer)
{
    // The buffer of the piece before is the usual one.
    if (!buffer || buffer.get() == latest_) return;
    if (buffers_.insert(buffer).second) bytes_ += bytes_of(buffer);
    latest_ = buffer.get();
}

void BufferKeeper::sweep(const std::function<void(const std::function<void(TextView)>&)>& for_each_view)
{
    std::vector<SharedBuffer> sorted(buffers_.begin(), buffers_.end());
    std::ranges::sort(sorted, {}, first_byte);
    std::vector<bool> used(sorted.size(), false);
    for_each_view([&](TextView view) {
        if (!view.has_storage()) return;
        const auto* place = static_cast<const std::uint8_t*>(view.data());
        const auto behind = std::ranges::upper_bound(sorted, place, {}, first_byte);
        if (behind == sorted.begin()) return;
        const auto owner = std::prev(behind);
        if (place <= end_byte(*owner)) used[static_cast<std::size_t>(owner - sorted.begin())] = true;
    });
    buffers_.clear();
    bytes_ = 0;
    latest_ = nullptr;
    for (std::size_t i = 0; i < sorted.size(); ++i)
        if (used[i]) keep(sorted[i]);
    latest_ = nullptr;
    sweep_at_ = std::max<std::size_t>(64, 2 * buffers_.size());
    sweep_at_bytes_ = std::max<std::size_t>(64 << 20, 2 * bytes_);
}

void TextArray::keep(const std::vector<SharedBuffer>& buffers)
{
    if (keeper_.wants_sweep()) sweep();
    for (const SharedBuffer& buffer : buffers) keeper_.keep(buffer);
}

void TextArray::sweep()
{
    keeper_.sweep([this](const auto& see) { views_.for_each_used(see); });
}

void TextArray::set(std::size_t index, TextView text)
{
    if (text.empty()) {
        views_.set(index, {});
        return;
    }
    const SharedBuffer buffer = make_buffer(text);
    set(index, buffer->view(), buffer);
}

void TextArray::set(std::size_t index, TextView piece, const SharedBuffer& buffer)
{
    if (keeper_.wants_sweep()) sweep();
    keeper_.keep(buffer);
    views_.set(index, piece);
}

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
