#include "platform/text/code_page.h"

#include "platform/text/decoding.h"
#include "platform/text/gb18030_tables.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <type_traits>

namespace tarvik {

namespace {

std::size_t count_bytes(std::string_view bytes, unsigned mask, unsigned wanted) noexcept
{
    std::size_t count = 0;
    for (const char byte : bytes) count += (static_cast<std::uint8_t>(byte) & mask) == wanted ? 1U : 0U;
    return count;
}

struct Utf8 {
    static constexpr bool keeps_ascii = true;

    static std::size_t expected(std::string_view bytes) noexcept
    {
        return bytes.size() - count_bytes(bytes, 0xc0, 0x80);
    }
    static char16_t two_bytes(const std::uint8_t*) noexcept { return 0; }
    static Decoded step(const std::uint8_t* at, const std::uint8_t* end) noexcept
    {
        const Utf8Step step = utf8_step(at, end);
        return {step.character, step.size};
    }
};

template <bool big_endian>
struct Utf16 {
    static constexpr bool keeps_ascii = false;

    static std::size_t expected(std::string_view bytes) noexcept { return bytes.size() / 2 + 1; }
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

class Gb18030 {
public:
    static constexpr bool keeps_ascii = true;

    static std::size_t expected(std::string_view bytes) noexcept
    {
        return bytes.size() - count_bytes(bytes, 0x80, 0x80) / 2;
    }
    char16_t two_bytes(const std::uint8_t* at) const noexcept { return characters_[(at[0] & 0x7fU) * 256U + at[1]]; }

    Decoded step(const std::uint8_t* at, const std::uint8_t* end) const
    {
        require_available(table_);
        if (*at == euro_code) return {euro_sign, 1};
        if (*at < 0x80 || end - at < 2) return {};
        const unsigned code = at[0] * 256U + at[1];
        for (const auto& row : table_.outside)
            if (row.code == code) return {row.character, 2};
        return end - at < 4 ? Decoded{} : four_bytes(at);
    }

private:
    static Decoded four_bytes(const std::uint8_t* at)
    {
        const unsigned a = at[0] - 0x81U, b = at[1] - 0x30U, c = at[2] - 0x81U, d = at[3] - 0x30U;
        if (a > 125 || b > 9 || c > 125 || d > 9) return {};
        const std::size_t place = ((a * 10 + b) * 126 + c) * 10 + d;
        const auto& basic = four_byte_table().character;
        if (place < basic.size()) return basic[place] == 0 ? Decoded{} : Decoded{basic[place], 4};
        if (place < first_supplementary_place) return {};
        const std::size_t character = 0x10000 + place - first_supplementary_place;
        return character > last_character ? Decoded{} : Decoded{static_cast<char32_t>(character), 4};
    }

    const TwoByteTable& table_ = two_byte_table();
    const char16_t* characters_ = table_.character.data();
};

bool is_ascii(std::string_view bytes) noexcept
{
    const std::uint8_t* at = bytes_of(bytes);
    const std::uint8_t* end = at + bytes.size();
    while (eight_ascii(at, end)) at += 8;
    while (at != end && *at < 0x80) ++at;
    return at == end;
}

Document ascii_document(std::string_view bytes)
{
    std::vector<std::uint8_t> characters;
    characters.reserve(bytes.size() + 2);
    characters.assign(bytes.begin(), bytes.end());
    characters.insert(characters.end(), {'\r', '\n'});
    return {std::make_shared<const TextBuffer>(std::move(characters)), bytes.size()};
}

/// Valid UTF-8 with a character of three bytes or more, which GBK text is never by chance.
bool is_wide_utf8(std::string_view bytes) noexcept
{
    const std::uint8_t* at = bytes_of(bytes);
    const std::uint8_t* end = at + bytes.size();
    bool wide = false;
    while (at != end) {
        if (eight_ascii(at, end)) {
            at += 8;
            continue;
        }
        const Utf8Step step = utf8_step(at, end);
        if (!step.valid) return false;
        wide = wide || step.size >= 3;
        at += step.size;
    }
    return wide;
}

ForeignText decode_by_mark(std::string_view bytes)
{
    if (bytes.starts_with("\xef\xbb\xbf")) return {decoded_document(Utf8(), bytes.substr(3)), U"UTF-8"};
    if (bytes.starts_with("\xff\xfe")) return {decoded_document(Utf16<false>(), bytes.substr(2)), U"UTF-16LE"};
    if (bytes.starts_with("\xfe\xff")) return {decoded_document(Utf16<true>(), bytes.substr(2)), U"UTF-16BE"};
    if (is_wide_utf8(bytes)) return {decoded_document(Utf8(), bytes), U"UTF-8"};
    return {decode_own(bytes), U"GB18030"};
}

/// The characters with a CR before each LF, and the line end that a decoded document keeps behind its text.
template <typename Characters, typename Char>
void copy_with_cr(Characters from, Char* to)
{
    for (const auto character : from) {
        if (character == Char{'\n'}) *to++ = Char{'\r'};
        *to++ = character;
    }
    *to++ = Char{'\r'};
    *to = Char{'\n'};
}

} // namespace

Document with_cr_lf(const Document& document)
{
    const TextView text = document.text();
    if (text.contains(U"\r") || !text.contains(U"\n")) return document;
    return text.visit([&document](auto characters) -> Document {
        using Char = std::remove_const_t<typename decltype(characters)::element_type>;
        const auto line_feeds = static_cast<std::size_t>(std::ranges::count(characters, Char{'\n'}));
        const std::size_t size = characters.size() + line_feeds;
        std::conditional_t<sizeof(Char) == 1, std::vector<Char>, std::basic_string<Char>> longer(size + 2, Char{});
        copy_with_cr(characters, longer.data());
        return {std::make_shared<const TextBuffer>(std::move(longer)), size};
    });
}

ForeignText recognise_foreign(std::string_view bytes)
{
    ForeignText text = decode_by_mark(bytes);
    const Document lines = with_cr_lf(text.document);
    text.lines_ended_in_lf = lines.buffer() != text.document.buffer();
    text.document = lines;
    return text;
}

Document decode_foreign(std::string_view bytes)
{
    return recognise_foreign(bytes).document;
}

Document decode_own(std::string_view bytes)
{
    return is_ascii(bytes) ? ascii_document(bytes) : decoded_document(Gb18030(), bytes);
}

} // namespace tarvik
