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

bool BufferKeeper::holds(TextView view) const
{
    const auto* const begin = static_cast<const std::uint8_t*>(view.data());
    return view.empty() || std::ranges::any_of(buffers_, [&](const SharedBuffer& buffer) {
               return begin >= first_byte(buffer) && begin + view.size() * view.width() <= end_byte(buffer);
           });
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

void TextArray::swap(std::size_t a, std::size_t b)
{
    const TextView text = views_.get(a);
    views_.set(a, views_.get(b));
    views_.set(b, text);
}

void TextArray::sweep()
{
    keeper_.sweep([this](const auto& see) { std::ranges::for_each(views_.used(), see); });
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

} // namespace tarvik
