#include "platform/text/code_page.h"

#include "platform/background.h"
#include "platform/text/character_tables.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>

namespace tarvik {

namespace {

// A scheme of bytes offers
//   keeps_ascii            whether a byte below 0x80 is always the character of that number,
//   step(at, end)          the character at `at` and the bytes it takes,
//   two_bytes(at)          where keeps_ascii: the character of the two bytes, or 0 when step() must decide.

struct Decoded {
    char32_t character = 0xfffd;
    unsigned size = 1;
};

struct Utf8 {
    static constexpr bool keeps_ascii = true;

    static char16_t two_bytes(const std::uint8_t*) noexcept { return 0; }
    static Utf8Step step(const std::uint8_t* at, const std::uint8_t* end) noexcept { return utf8_step(at, end); }
};

/// What may be UTF-8: of a block that is none the rest is passed over.
struct PossibleUtf8 : Utf8 {
    mutable bool is_none = false, any_wide = false; ///< wide: a character of three bytes or more

    Utf8Step step(const std::uint8_t* at, const std::uint8_t* end) const noexcept
    {
        Utf8Step step = utf8_step(at, end);
        any_wide = any_wide || step.size >= 3;
        is_none = is_none || !step.valid;
        if (!step.valid) step.size = static_cast<unsigned>(end - at);
        return step;
    }
};

template <bool big_endian>
struct Utf16 {
    static constexpr bool keeps_ascii = false;

    static char32_t unit(const std::uint8_t* at) noexcept
    {
        return big_endian ? at[0] * 256U + at[1] : at[1] * 256U + at[0];
    }
    static Decoded step(const std::uint8_t* at, const std::uint8_t* end) noexcept
    {
        if (end - at < 2) return {};
        const char32_t first = unit(at);
        if (!is_surrogate(first)) return {first, 2};
        const char32_t second = is_high_surrogate(first) && end - at >= 4 ? unit(at + 2) : 0;
        if (!is_low_surrogate(second)) return {replacement_character, 2};
        return {joined(first, second), 4};
    }
};

struct Gb18030 {
    static constexpr bool keeps_ascii = true;

    static char16_t two_bytes(const std::uint8_t* at) noexcept
    {
        return two_byte_characters[(at[0] & 0x7fU) * 256U + at[1]];
    }
    static Decoded step(const std::uint8_t* at, const std::uint8_t* end) noexcept
    {
        if (*at == euro_code) return {euro_sign, 1};
        if (*at < 0x80 || end - at < 2) return {};
        const unsigned code = at[0] * 256U + at[1];
        for (const OutsideCode& row : outside_codes)
            if (row.code == code) return {row.character, 2};
        return end - at < 4 ? Decoded{} : four_bytes(at);
    }
    static Decoded four_bytes(const std::uint8_t* at) noexcept
    {
        const unsigned a = at[0] - 0x81U, b = at[1] - 0x30U, c = at[2] - 0x81U, d = at[3] - 0x30U;
        if (a > 125 || b > 9 || c > 125 || d > 9) return {};
        const std::size_t place = ((a * 10 + b) * 126 + c) * 10 + d;
        if (place < four_byte_places)
            return four_byte_characters[place] == 0 ? Decoded{} : Decoded{four_byte_characters[place], 4};
        if (place < first_supplementary_place) return {};
        const std::size_t character = basic_plane_size + place - first_supplementary_place;
        return character > last_character ? Decoded{} : Decoded{static_cast<char32_t>(character), 4};
    }
};

const std::uint8_t* bytes_of(std::string_view bytes) noexcept
{
    return reinterpret_cast<const std::uint8_t*>(bytes.data());
}

/// Decodes what begins before `stop`. Ends early, with `at` on it, at a character that Char cannot hold.
template <typename Scheme, typename Char>
void decode_stretch(const Scheme& scheme, const std::uint8_t*& at, const std::uint8_t* stop, const std::uint8_t* end,
                    Char*& out)
{
    while (at < stop) {
        if constexpr (Scheme::keeps_ascii) {
            if (*at < 0x80) {
                const bool eight = eight_ascii(at, stop);
                const std::ptrdiff_t count = eight ? 8 : 1;
                out = eight ? std::copy_n(at, 8, out) : std::copy_n(at, 1, out);
                at += count;
                continue;
            }
            if (const char16_t character = end - at < 2 ? u'\0' : scheme.two_bytes(at)) {
                *out++ = character;
                at += 2;
                continue;
            }
        }
        const auto decoded = scheme.step(at, end);
        if (decoded.character > std::numeric_limits<Char>::max()) return;
        *out++ = static_cast<Char>(decoded.character);
        at += decoded.size;
    }
}

/// Decodes a block of bytes behind `text`. Gives how many bytes at its end were left, because they may be the beginning
/// of a character that goes on in the next block; the last block leaves none.
template <typename Scheme>
std::size_t decode_block(const Scheme& scheme, std::string_view block, bool is_last, TextBuilder& text)
{
    constexpr std::size_t longest_code = 4;
    const std::uint8_t *at = bytes_of(block), *const end = at + block.size();
    const std::uint8_t* const stop = is_last ? end : end - std::min(longest_code - 1, block.size());
    const auto decode = [&]<typename Char>(Char* begin) {
        Char* out = begin;
        decode_stretch(scheme, at, stop, end, out);
        text.added(static_cast<std::size_t>(out - begin));
    };
    while (at < stop) {
        const auto most = static_cast<std::size_t>(stop - at);
        if (text.width() < 4) decode(text.room<char16_t>(most));
        else decode(text.room<char32_t>(most));
        if (at >= stop) break;
        const auto beyond_basic = scheme.step(at, end);
        text.append({&beyond_basic.character, 1});
        at += beyond_basic.size;
    }
    return static_cast<std::size_t>(end - at);
}

bool is_ascii(std::string_view bytes) noexcept
{
    const std::uint8_t* at = bytes_of(bytes);
    const std::uint8_t* end = at + bytes.size();
    while (eight_ascii(at, end)) at += 8;
    while (at != end && *at < 0x80) ++at;
    return at == end;
}

/// The bytes of a source in blocks. The next block of a long source is read while the one in hand is worked on.
class Blocks {
public:
    explicit Blocks(ByteSource source) : source_(std::move(source)) { take(fill(0), {}); }

    std::string_view block() const noexcept { return block_; }
    bool is_last() const noexcept { return is_last_; }
    /// On to the next block, which begins with the `kept` last bytes of this one.
    void advance(std::size_t kept) { take(next_.get(), block_.substr(block_.size() - kept)); }
    void skip(std::size_t bytes) noexcept { block_.remove_prefix(bytes); }

private:
    static constexpr std::size_t size = std::size_t{1} << 19, ahead = 16;

    std::size_t fill(unsigned which)
    {
        auto& memory = memory_.at(which);
        if (!memory) memory.reset(new char[ahead + size]); // NOLINT(modernize-make-unique): that would clear it
        std::span<char> room(memory.get() + ahead, size);
        while (!room.empty()) {
            const std::size_t got = source_(room);
            if (got == 0) break;
            room = room.subspan(got);
        }
        return size - room.size();
    }
    void take(std::size_t got, std::string_view kept)
    {
        char* const begin = memory_.at(current_).get() + ahead;
        std::ranges::copy(kept, begin - kept.size());
        block_ = {begin - kept.size(), kept.size() + got};
        is_last_ = got < size;
        current_ = 1 - current_;
        if (!is_last_) next_ = in_background([this, which = current_] { return fill(which); });
    }

    ByteSource source_;
    std::array<std::unique_ptr<char[]>, 2> memory_;
    unsigned current_ = 0;
    bool is_last_ = false;
    std::string_view block_;
    std::future<std::size_t> next_; // ends before what it fills
};

/// All that is left of the blocks, unless `stop` is set by then.
template <typename Scheme>
void decode_blocks(const Scheme& scheme, Blocks& blocks, TextBuilder& text, const bool& stop = false)
{
    for (;;) {
        std::size_t left = 0;
        if (Scheme::keeps_ascii && is_ascii(blocks.block()))
            text.append({bytes_of(blocks.block()), blocks.block().size()});
        else left = decode_block(scheme, blocks.block(), blocks.is_last(), text);
        if (blocks.is_last() || stop) return;
        blocks.advance(left);
    }
}

/// Decodes as UTF-8 unless the bytes show that they are none. GBK text is never by chance valid UTF-8 with a character
/// of three bytes or more; ASCII alone is both.
bool decode_as_utf8(Blocks& blocks, TextBuilder& text)
{
    const PossibleUtf8 scheme;
    decode_blocks(scheme, blocks, text, scheme.is_none);
    return !scheme.is_none && (scheme.any_wide || text.width() == 1);
}

std::u32string_view decode_foreign_blocks(const OpenBytes& open, TextBuilder& text)
{
    Blocks blocks(open());
    const auto marked = [&](std::string_view mark, const auto& scheme) {
        if (!blocks.block().starts_with(mark)) return false;
        blocks.skip(mark.size());
        decode_blocks(scheme, blocks, text);
        return true;
    };
    if (marked("\xef\xbb\xbf", Utf8())) return U"UTF-8";
    if (marked("\xff\xfe", Utf16<false>())) return U"UTF-16LE";
    if (marked("\xfe\xff", Utf16<true>())) return U"UTF-16BE";
    if (decode_as_utf8(blocks, text)) return text.width() == 1 ? U"GB18030" : U"UTF-8";
    text = {};
    Blocks again(open());
    decode_blocks(Gb18030(), again, text);
    return U"GB18030";
}

/// With the line end that a decoded document keeps behind its text.
Document closed(TextBuilder& text)
{
    const std::size_t size = text.size();
    text.append(U"\r\n");
    return {text.finish(), size};
}

ByteSource source_of(std::string_view bytes)
{
    return [bytes](std::span<char> target) mutable {
        const std::size_t count = bytes.copy(target.data(), target.size());
        bytes.remove_prefix(count);
        return count;
    };
}

} // namespace

ForeignText recognise_foreign(const OpenBytes& open)
{
    TextBuilder text;
    ForeignText foreign;
    foreign.encoding = decode_foreign_blocks(open, text);
    foreign.lines_ended_in_lf = text.end_lines_in_cr_lf();
    foreign.document = closed(text);
    return foreign;
}

ForeignText recognise_foreign(std::string_view bytes)
{
    return recognise_foreign([bytes] { return source_of(bytes); });
}

Document decode_own(std::string_view bytes)
{
    TextBuilder text;
    Blocks blocks(source_of(bytes));
    decode_blocks(Gb18030(), blocks, text);
    return closed(text);
}

} // namespace tarvik
