#include "mainwindow/table.h"

#include <algorithm>
#include <cassert>

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

void BufferKeeper::keep(std::span<const SharedBuffer> buffers, const Views& for_each_view)
{
    if (buffers_.size() >= sweep_at_ || bytes_ > sweep_at_bytes_) sweep(for_each_view);
    for (const SharedBuffer& buffer : buffers) {
        if (!buffer || buffer.get() == latest_) continue; // the buffer of the piece before is the usual one
        if (buffers_.insert(buffer).second) bytes_ += bytes_of(buffer);
        latest_ = buffer.get();
    }
}

bool BufferKeeper::holds(TextView view) const
{
    const auto* const begin = static_cast<const std::uint8_t*>(view.data());
    return view.empty() || std::ranges::any_of(buffers_, [&](const SharedBuffer& buffer) {
               return begin >= first_byte(buffer) && begin + view.size() * view.width() <= end_byte(buffer);
           });
}

void BufferKeeper::sweep(const Views& for_each_view)
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
    for (std::size_t i = 0; i < sorted.size(); ++i)
        if (!used[i] && buffers_.erase(sorted[i]) > 0) bytes_ -= bytes_of(sorted[i]);
    latest_ = nullptr;
    sweep_at_ = std::max<std::size_t>(64, 2 * buffers_.size());
    sweep_at_bytes_ = std::max<std::size_t>(64 << 20, 2 * bytes_);
}

void TextArray::keep_all(std::span<const SharedBuffer> buffers)
{
    keeper_.keep(buffers, [this](const auto& see) { std::ranges::for_each(views_.used(), see); });
}

void TextArray::swap(std::size_t a, std::size_t b)
{
    const TextView text = views_.get(a);
    views_.set(a, views_.get(b));
    views_.set(b, text);
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
    keep_all({&buffer, 1});
    views_.set(index, piece);
}

Table::Table() : lines_(last_row)
{
    columns_.reserve(last_column + 1);
    for (std::size_t column = 0; column <= last_column; ++column) columns_.emplace_back(last_row);
}

TextView Table::cell(std::size_t row, std::size_t column) const
{
    const Cell cell = column <= last_column ? columns_[column].get(row) : 0;
    if (cell == 0) return {};
    if (cell >= own) return views_[cell - own];
    const TextView field = lines_.get(row).text.substr(cell - 1);
    return field.substr(0, field.find(U'\t'));
}

void Table::prefetch(std::size_t row, std::size_t column) const
{
    const Cell cell = column <= last_column ? columns_[column].get(row) : 0;
    const TextView text = cell >= own ? views_[cell - own] : lines_.get(row).text.substr(cell == 0 ? 0 : cell - 1);
    __builtin_prefetch(text.data());
}

void Table::set_cell(std::size_t row, std::size_t column, TextView text)
{
    if (column > last_column) throw Failure(U"数据超出软件所设定的数组范围。");
    if (text.empty()) {
        forget(row, column);
        columns_[column].set(row, 0);
        return;
    }
    const SharedBuffer buffer = make_buffer(text);
    keep({buffer});
    set_own(row, column, buffer->view());
}

void Table::set_cell_view(std::size_t row, std::size_t column, TextView piece)
{
    assert(keeper_.holds(piece));
    set_own(row, column, piece);
}

void Table::set_own(std::size_t row, std::size_t column, TextView piece)
{
    forget(row, column);
    if (free_.empty()) {
        columns_[column].set(row, own + static_cast<Cell>(views_.size()));
        views_.push_back(piece);
        return;
    }
    columns_[column].set(row, own + free_.back());
    views_[free_.back()] = piece;
    free_.pop_back();
}

// The number of the cell's own view is free again.
void Table::forget(std::size_t row, std::size_t column)
{
    const Cell cell = columns_[column].get(row);
    if (cell < own) return;
    views_[cell - own] = {};
    free_.push_back(cell - own);
}

void Table::set_fields(std::size_t row, TextView line, std::span<const std::uint32_t> starts)
{
    assert(keeper_.holds(line));
    const std::size_t before = lines_.get(row).columns;
    for (std::size_t column = starts.size() + 1; column <= before; ++column)
        if (const Cell kept = columns_[column].get(row); kept != 0 && kept < own)
            set_own(row, column, cell(row, column));
    lines_.set(row, {line, starts.size()});
    for (std::size_t i = 0; i < starts.size(); ++i) {
        if (!views_.empty()) forget(row, i + 1);
        columns_[i + 1].set(row, starts[i] + 1);
    }
}

void Table::keep(const std::vector<SharedBuffer>& buffers)
{
    keeper_.keep(buffers, [this](const auto& see) {
        for (const Line& line : lines_.used()) see(line.text);
        for (const TextView view : views_) see(view);
    });
}

void Table::clear(std::size_t from_row, std::size_t to_row, std::size_t from_column, std::size_t to_column)
{
    for (std::size_t column = from_column; column <= std::min(to_column, last_column); ++column) {
        for (std::size_t row = from_row; !views_.empty() && row <= std::min(to_row, last_row); ++row)
            forget(row, column);
        columns_[column].clear(from_row, to_row);
    }
    for (std::size_t row = from_row; from_column <= 1 && row <= std::min(to_row, last_row); ++row)
        if (lines_.get(row).columns <= to_column) lines_.clear(row, row);
}

void Table::swap_cells(std::size_t column, std::size_t row_a, std::size_t row_b)
{
    const TextView a = cell(row_a, column), b = cell(row_b, column);
    set_own(row_a, column, b);
    set_own(row_b, column, a);
}

} // namespace tarvik
