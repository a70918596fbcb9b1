#include "platform/text/document.h"

#include "platform/background.h"
#include "platform/text/letter_case.h"

#include <algorithm>
#include <type_traits>

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

/// Stretches that are all ASCII go by arithmetic that vectorizes, the others by the table.
template <typename Char>
void lower_into(std::span<const Char> characters, Char* small) noexcept
{
    constexpr std::size_t stretch = 16;
    const char16_t* table = lower_table().data();
    while (!characters.empty()) {
        const auto piece = characters.first(std::min(stretch, characters.size()));
        Char bits = 0;
        for (const Char character : piece) bits |= character;
        if (bits < 0x80 && piece.size() == stretch) {
            for (std::size_t i = 0; i < stretch; ++i) {
                const bool capital = static_cast<Char>(piece[i] - Char{'A'}) < 26;
                small[i] = static_cast<Char>(piece[i] + (capital ? 'a' - 'A' : 0));
            }
        } else {
            for (std::size_t i = 0; i < piece.size(); ++i)
                small[i] = piece[i] <= 0xffff ? static_cast<Char>(table[piece[i]]) : piece[i];
        }
        small += piece.size();
        characters = characters.subspan(piece.size());
    }
}

SharedBuffer buffer_of(Text text)
{
    return std::make_shared<const TextBuffer>(std::move(text));
}

} // namespace

TextView TextBuffer::view() const noexcept
{
    // An empty vector may have no address, but an empty document is more than no document.
    static constexpr std::uint8_t nothing = 0;
    switch (width_) {
    case 1: return {narrow_.empty() ? &nothing : narrow_.data(), narrow_.size()};
    case 2: return {basic_.data(), basic_.size()};
    default: return {wide_.data(), wide_.size()};
    }
}

unsigned needed_width(TextView text) noexcept
{
    const char32_t bits = all_bits(text);
    return bits > 0xffff ? 4 : bits > 0xff ? 2 : 1;
}

SharedBuffer make_buffer(TextView text)
{
    return text.visit([width = needed_width(text)](auto characters) {
        if (width == 4) return buffer_of(Text(characters.begin(), characters.end()));
        if (width == 2) return std::make_shared<const TextBuffer>(std::u16string(characters.begin(), characters.end()));
        return std::make_shared<const TextBuffer>(std::vector<std::uint8_t>(characters.begin(), characters.end()));
    });
}

SharedBuffer make_lowered(TextView text)
{
    // No small letter is wider than its capital, so the width stays.
    return text.visit([](auto characters) {
        using Char = std::remove_const_t<typename decltype(characters)::element_type>;
        std::conditional_t<sizeof(Char) == 1, std::vector<Char>, std::basic_string<Char>> small(characters.size(),
                                                                                                Char{});
        in_halves(small.size(), characters_worth_a_thread, [&](std::size_t first, std::size_t behind) {
            lower_into<Char>(characters.subspan(first, behind - first), small.data() + first);
        });
        return std::make_shared<const TextBuffer>(std::move(small));
    });
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
    if (!state_->lowered) state_->lowered = make_lowered(state_->buffer->view());
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
