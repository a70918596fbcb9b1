#include "desktop/text_view/break_index.h"

#include <algorithm>
#include <span>

namespace tarvik {

namespace {

constexpr std::size_t block_size = 4096;

// Line ends that stand at characters `from` to `to` - 1 of the whole; the character at `to` is looked at, too.
template <typename Char>
std::size_t count_in(std::span<const Char> text, std::size_t from, std::size_t to)
{
    const std::size_t inner = to == text.size() && to > from ? to - 1 : to;
    std::size_t count = 0;
    for (std::size_t i = from; i < inner; ++i) {
        const unsigned is_lf = text[i] == '\n';
        const unsigned lone_cr = static_cast<unsigned>(text[i] == '\r') & static_cast<unsigned>(text[i + 1] != '\n');
        count += is_lf | lone_cr;
    }
    if (inner < to && (text[inner] == '\n' || text[inner] == '\r')) ++count;
    return count;
}

std::size_t count_in(TextView text, std::size_t from, std::size_t to)
{
    return text.visit([&](auto characters) { return count_in(characters, from, to); });
}

std::size_t find_break(TextView text, std::size_t from, std::size_t number)
{
    return text.visit([&](auto characters) {
        std::size_t i = from;
        for (; i < characters.size(); ++i) {
            const bool lone_cr = characters[i] == '\r' && (i + 1 == characters.size() || characters[i + 1] != '\n');
            if ((characters[i] == '\n' || lone_cr) && --number == 0) return i + 1;
        }
        return i;
    });
}

} // namespace

std::size_t count_breaks(TextView text)
{
    return count_in(text, 0, text.size());
}

std::size_t behind_break(TextView text, std::size_t number)
{
    return find_break(text, 0, number);
}

BreakIndex::BreakIndex(SharedBuffer buffer) : buffer_(std::move(buffer))
{
    const TextView text = buffer_->view();
    before_block_.reserve(text.size() / block_size + 2);
    std::size_t count = 0;
    for (std::size_t from = 0; from < text.size(); from += block_size) {
        before_block_.push_back(count);
        count += count_in(text, from, std::min(from + block_size, text.size()));
    }
    before_block_.push_back(count);
}

std::size_t BreakIndex::breaks_before(std::size_t offset) const
{
    const std::size_t block = offset / block_size;
    return before_block_[block] + count_in(buffer_->view(), block * block_size, offset);
}

std::size_t BreakIndex::behind(std::size_t number) const
{
    const auto block = std::lower_bound(before_block_.begin(), before_block_.end(), number) - before_block_.begin() - 1;
    const auto index = static_cast<std::size_t>(block);
    return find_break(buffer_->view(), index * block_size, number - before_block_[index]);
}

} // namespace tarvik
