#include "engines/spreadsheets/cell_text.h"

#include "platform/text/utf8.h"

#include <algorithm>
#include <charconv>

namespace tarvik::ooxml {

namespace {

constexpr std::size_t escape_length = 7; // of _xHHHH_

constexpr bool is_hexadecimal(char32_t c) noexcept
{
    return (c >= U'0' && c <= U'9') || (c >= U'A' && c <= U'F') || (c >= U'a' && c <= U'f');
}

// Whether "_xHHHH" stands there. Written so, whatever follows, it would be read as another character or could be.
template <typename Characters>
bool is_escape_begun_at(const Characters& text, std::size_t at) noexcept
{
    if (text.size() - at < escape_length - 1 || text[at] != '_' || text[at + 1] != 'x') return false;
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at) + 2,
                       text.begin() + static_cast<std::ptrdiff_t>(at) + 6,
                       [](auto c) { return is_hexadecimal(static_cast<char32_t>(c)); });
}

// What no XML text can hold.
constexpr bool is_forbidden(char32_t c) noexcept
{
    return (c < 0x20 && c != U'\t' && c != U'\n') || c == 0xFFFE || c == 0xFFFF;
}

// Nearly every text is.
bool is_written_as_it_is(TextView text)
{
    constexpr std::size_t most_units = 2; // of a character
    if (text.size() > longest_cell_text / most_units) return false;
    return text.visit([](auto characters) {
        return std::ranges::none_of(characters, [](char32_t c) {
            return c < 0x20 || c == U'&' || c == U'<' || c == U'>' || c == U'_' || is_forbidden(c);
        });
    });
}

void append_escape(char32_t c, std::string& raw)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    raw += "_x";
    for (int shift = 12; shift >= 0; shift -= 4) raw += digits[(c >> static_cast<unsigned>(shift)) & 0xFU];
    raw += '_';
}

void append_character(char32_t c, std::string& raw)
{
    if (is_forbidden(c)) return append_escape(c, raw);
    switch (c) {
    case U'&': raw += "&amp;"; break;
    case U'<': raw += "&lt;"; break;
    case U'>': raw += "&gt;"; break;
    default: append_utf8(c, raw);
    }
}

char32_t escaped_unit(std::string_view written, std::size_t at) noexcept
{
    unsigned unit = 0;
    std::from_chars(written.data() + at + 2, written.data() + at + 6, unit, 16);
    return static_cast<char32_t>(unit);
}

} // namespace

std::string encode_cell_text(TextView text)
{
    if (is_written_as_it_is(text)) return to_utf8(text);
    std::string raw;
    raw.reserve(text.size());
    text.visit([&raw](auto characters) {
        int units = 0;
        for (std::size_t i = 0; i < characters.size(); ++i) {
            const auto c = static_cast<char32_t>(characters[i]);
            if (c == U'\r' && i + 1 < characters.size() && characters[i + 1] == U'\n') continue;
            units += c > 0xFFFF && c <= last_character ? 2 : 1;
            if (units > longest_cell_text) break;
            if (is_escape_begun_at(characters, i)) append_escape(c, raw);
            else append_character(c, raw);
        }
    });
    return raw;
}

Text decode_cell_text(std::string_view written)
{
    Text text;
    std::size_t plain = 0; // where the piece without escapes begins
    for (auto at = written.find("_x"); at != std::string_view::npos; at = written.find("_x", at)) {
        if (!is_escape_begun_at(written, at) || written.substr(at + 6, 1) != "_") {
            ++at;
            continue;
        }
        text += from_utf8(written.substr(plain, at - plain));
        const auto unit = escaped_unit(written, at);
        text += is_surrogate(unit) ? replacement_character : unit;
        at += escape_length;
        plain = at;
    }
    text += from_utf8(written.substr(plain));
    return text;
}

bool needs_preserving(std::string_view raw) noexcept
{
    const auto breaks = [](char c) { return c == '\t' || c == '\n'; };
    return !raw.empty() && (raw.front() == ' ' || raw.back() == ' ' || std::ranges::any_of(raw, breaks));
}

} // namespace tarvik::ooxml
