#include "platform/text/text_builder.h"

#include "platform/large_pages.h"

#include <algorithm>
#include <new>
#include <utility>

namespace tarvik {

namespace {

/// Makes a block as large as it is asked for, whatever it held before kept.
void resize(CharacterMemory& memory, std::size_t bytes)
{
    void* const resized = std::realloc(memory.get(), std::max<std::size_t>(bytes, 1));
    if (!resized) throw std::bad_alloc();
    static_cast<void>(memory.release());
    memory.reset(resized);
    prefer_large_pages(resized, bytes);
}

/// Calls `work` with the memory as that of std::uint8_t, char16_t or char32_t.
template <typename Work>
void in_width(void* memory, unsigned width, const Work& work) noexcept
{
    switch (width) {
    case 1: work(static_cast<std::uint8_t*>(memory)); break;
    case 2: work(static_cast<char16_t*>(memory)); break;
    default: work(static_cast<char32_t*>(memory)); break;
    }
}

void write(TextView piece, void* memory, std::size_t place, unsigned width) noexcept
{
    in_width(memory, width, [&]<typename Char>(Char* target) {
        piece.visit([&](auto characters) {
            std::ranges::transform(characters, target + place, [](auto c) { return static_cast<Char>(c); });
        });
    });
}

/// From the end on, each character to where it stands when there are so many CRs before it.
template <typename Char>
void spread(Char* characters, std::size_t size, std::size_t line_feeds) noexcept
{
    for (std::size_t from = size; line_feeds > 0 && from-- > 0;) {
        characters[from + line_feeds] = characters[from];
        if (characters[from] == Char{'\n'}) characters[from + --line_feeds] = Char{'\r'};
    }
}

} // namespace

void TextBuilder::make_room(std::size_t count, unsigned width)
{
    if (width > width_) {
        CharacterMemory wider;
        const std::size_t bytes = (size_ + count) * width;
        resize(wider, bytes);
        write(view(), wider.get(), 0, width);
        memory_ = std::move(wider);
        capacity_ = bytes;
        width_ = width;
    } else if (const std::size_t needed = (size_ + count) * width_; needed > capacity_) {
        const std::size_t bytes = std::max(needed, 2 * capacity_);
        resize(memory_, bytes);
        capacity_ = bytes;
    }
}

void TextBuilder::append(TextView piece)
{
    make_room(piece.size(), piece.width() > width_ ? std::max(width_, needed_width(piece)) : width_);
    write(piece, memory_.get(), size_, width_);
    size_ += piece.size();
}

bool TextBuilder::end_lines_in_cr_lf()
{
    const TextView text = view();
    if (text.contains(U"\r") || !text.contains(U"\n")) return false;
    const auto line_feeds =
        text.visit([](auto characters) { return static_cast<std::size_t>(std::ranges::count(characters, '\n')); });
    make_room(line_feeds, width_);
    in_width(memory_.get(), width_, [&](auto* characters) { spread(characters, size_, line_feeds); });
    size_ += line_feeds;
    return true;
}

SharedBuffer TextBuilder::finish()
{
    if (const unsigned needed = width_ > 1 ? needed_width(view()) : 1; needed < width_) {
        write(view(), memory_.get(), 0, needed); // no character stands before where it stood
        width_ = needed;
    }
    if (!memory_ || capacity_ != size_ * width_) resize(memory_, size_ * width_);
    auto buffer = std::make_shared<const TextBuffer>(std::move(memory_), size_, width_);
    *this = {};
    return buffer;
}

} // namespace tarvik
