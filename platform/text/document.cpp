#include "platform/text/document.h"

#include "platform/background.h"
#include "platform/large_pages.h"
#include "platform/text/character_tables.h"

#include <algorithm>
#include <atomic>
#include <new>

namespace tarvik {

namespace {

constexpr std::u32string_view line_end = U"\r\n";
constexpr std::size_t scans_before_index = 32; // making one takes about as long
constexpr std::size_t characters_worth_a_thread = std::size_t{1} << 20;

/// All bits that occur in the characters: tells the width they need, and is a loop that vectorizes.
char32_t all_bits(TextView text) noexcept
{
    return text.visit([](auto characters) {
        char32_t bits = 0;
        for (const auto character : characters) bits |= character;
        return bits;
    });
}

constexpr std::size_t stretch = 32;

/// Whether a letter that has a small one may be among them, by a loop that vectorizes: ASCII, the alphabets below the
/// Chinese characters and the few above them.
template <typename Char>
bool may_hold_capitals(std::span<const Char> piece) noexcept
{
    unsigned any = 0;
    for (const Char c : piece) {
        const bool ascii = static_cast<Char>(c - 'A') < 26;
        if constexpr (sizeof(Char) == 1) any |= static_cast<unsigned>(ascii | (c >= 0xc0));
        else
            any |= static_cast<unsigned>(ascii | (static_cast<Char>(c - 0xc0) < 0x2e80 - 0xc0) |
                                         (static_cast<Char>(c - 0xa640) < 0xac00 - 0xa640) |
                                         (static_cast<Char>(c - 0xff21) < 26));
    }
    return any != 0;
}

template <typename Char>
bool has_capital(std::span<const Char> characters) noexcept
{
    for (; !characters.empty(); characters = characters.subspan(std::min(stretch, characters.size()))) {
        const auto piece = characters.first(std::min(stretch, characters.size()));
        if (may_hold_capitals(piece) && std::ranges::any_of(piece, [](Char c) { return lower(c) != c; })) return true;
    }
    return false;
}

/// Stretches that are all ASCII go by arithmetic, the others by the table.
template <typename Char>
void lower_into(std::span<const Char> characters, Char* small) noexcept
{
    const char16_t* table = small_letters.data();
    while (!characters.empty()) {
        const auto piece = characters.first(std::min(stretch, characters.size()));
        Char bits = 0;
        for (const Char character : piece) bits |= character;
        if (bits < 0x80 && piece.size() == stretch) {
            for (std::size_t i = 0; i < stretch; ++i) {
                const bool capital = static_cast<Char>(piece[i] - Char{'A'}) < 26;
                small[i] = static_cast<Char>(piece[i] + (capital ? 'a' - 'A' : 0));
            }
        } else if (!may_hold_capitals(piece)) {
            std::ranges::copy(piece, small);
        } else {
            for (std::size_t i = 0; i < piece.size(); ++i)
                small[i] = piece[i] <= 0xffff ? static_cast<Char>(table[piece[i]]) : piece[i];
        }
        small += piece.size();
        characters = characters.subspan(piece.size());
    }
}

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

/// Bytes a character that hold all of these: 1, 2 or 4.
unsigned needed_width(TextView text) noexcept
{
    constexpr std::size_t at_once = 1 << 12; // mostly the beginning tells
    unsigned width = 1;
    for (std::size_t from = 0; from < text.size() && width < text.width(); from += at_once) {
        const char32_t bits = all_bits(text.substr(from, at_once));
        width = std::max(width, bits > 0xffff ? 4U : bits > 0xff ? 2U : 1U);
    }
    return width;
}

/// The text with every letter in lower case, character for character; nothing for one without capitals.
SharedBuffer make_lowered(TextView text)
{
    // No small letter is wider than its capital, so the width stays.
    return text.visit([]<typename Char>(std::span<const Char> characters) -> SharedBuffer {
        std::atomic<bool> capital = false;
        in_halves(characters.size(), characters_worth_a_thread, [&](std::size_t begin, std::size_t behind) {
            if (has_capital(characters.subspan(begin, behind - begin))) capital = true;
        });
        if (!capital) return nullptr;
        TextBuilder builder;
        Char* const small = builder.room<Char>(characters.size());
        in_halves(characters.size(), characters_worth_a_thread, [&](std::size_t begin, std::size_t behind) {
            lower_into<Char>(characters.subspan(begin, behind - begin), small + begin);
        });
        builder.added(characters.size());
        return builder.finish();
    });
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
    auto buffer = std::make_shared<const TextBuffer>(TextBuffer{std::move(memory_), size_, width_});
    *this = {};
    return buffer;
}

SharedBuffer make_buffer(TextView text)
{
    TextBuilder builder;
    builder.append(text);
    return builder.finish();
}

SharedText::SharedText(TextView text) : owner(make_buffer(text)), view(owner->view()) {}

/// One thread owns all documents, so the twin needs no lock.
struct Document::State {
    SharedBuffer buffer;
    SharedBuffer lowered;
    std::size_t keyed_scans = 0;
    std::unique_ptr<const SubstringIndex> index;
};

Document::Document(TextView text) : Document(make_buffer(text), text.size()) {}

Document::Document(SharedBuffer buffer, std::size_t size)
    : state_(std::make_shared<State>(State{std::move(buffer), nullptr, 0, nullptr})), size_(size)
{
}

TextView Document::text() const noexcept
{
    return state_ ? state_->buffer->view().substr(0, size_) : TextView();
}

TextView Document::lowered() const
{
    return state_ ? lowered_buffer()->view().substr(0, size_) : TextView();
}

const SharedBuffer& Document::buffer() const noexcept
{
    static const SharedBuffer none;
    return state_ ? state_->buffer : none;
}

const SharedBuffer& Document::lowered_buffer() const
{
    if (!state_) return buffer();
    if (!state_->lowered) {
        state_->lowered = make_lowered(state_->buffer->view());
        if (!state_->lowered) state_->lowered = state_->buffer;
    }
    return state_->lowered;
}

void Document::note_keyed_scan() const
{
    if (!state_ || state_->index || ++state_->keyed_scans < scans_before_index) return;
    const TextView text = lowered_buffer()->view();
    if (text.size() <= SubstringIndex::longest_text) state_->index = std::make_unique<const SubstringIndex>(text);
}

const SubstringIndex* Document::index() const noexcept
{
    return state_ ? state_->index.get() : nullptr;
}

Document Document::with_closing_line_end() const
{
    if (state_ && state_->buffer->view().substr(size_, line_end.size()) == TextView(line_end)) {
        Document longer = *this;
        longer.size_ += line_end.size();
        return longer;
    }
    return Document(text().str() + TextView(line_end));
}

} // namespace tarvik
