#include "dictionary_tool/dictionary_source.h"
#include "platform/failure.h"
#include "platform/files/system_paths.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

/// What a line of the information says behind this name and "="; nothing if there is no such line.
std::string_view value_of(std::string_view information, std::string_view name)
{
    while (!information.empty()) {
        std::string_view line = cut_to(information, '\n');
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (cut_to(line, '=') == name) return line;
    }
    return {};
}

/// Takes a number of so many bytes, the most significant first, off the front.
std::optional<std::size_t> cut_number(std::string_view& bytes, std::size_t width)
{
    if (bytes.size() < width) return std::nullopt;
    std::size_t number = 0;
    for (const char byte : bytes.substr(0, width)) number = number << 8 | static_cast<unsigned char>(byte);
    bytes.remove_prefix(width);
    return number;
}

constexpr std::array<std::u32string_view, 9> line_tags{U"br", U"p", U"div", U"li", U"tr", U"def", U"ex", U"ar", U"h1"};

constexpr std::array<std::pair<std::u32string_view, char32_t>, 6> entities{
    {{U"amp", U'&'}, {U"lt", U'<'}, {U"gt", U'>'}, {U"quot", U'"'}, {U"apos", U'\''}, {U"nbsp", U' '}}};

bool ends_line(TextView tag)
{
    std::size_t begin = tag.starts_with(U"/") ? 1 : 0, end = begin;
    while (end < tag.size() && tag[end] != U' ' && tag[end] != U'/') ++end;
    const Text name = lower(tag.substr(begin, end - begin));
    return std::ranges::find(line_tags, name) != line_tags.end();
}

/// The character of an entity without its "&" and ";"; 0 for one that is not known.
char32_t entity(TextView name)
{
    for (const auto& [known, character] : entities)
        if (name == TextView(known)) return character;
    if (!name.starts_with(U"#")) return 0;
    const bool hexadecimal = name.size() > 2 && lower(name[1]) == U'x';
    constexpr std::u32string_view digits = U"0123456789abcdef";
    char32_t code = 0;
    for (std::size_t i = hexadecimal ? 2 : 1; i < name.size(); ++i) {
        const std::size_t digit = digits.find(lower(name[i]));
        const std::size_t base = hexadecimal ? 16 : 10;
        if (digit >= base || code > 0x10ffff) return 0;
        code = static_cast<char32_t>(code * base + digit);
    }
    return code <= 0x10ffff ? code : 0;
}

/// The readable text of a piece of HTML, XDXF or the like: tags go, and those that end a line or paragraph become a
/// line end; entities become their characters.
Text without_markup(TextView marked_up)
{
    constexpr std::size_t longest_entity = 10;
    Text text;
    for (std::size_t i = 0; i < marked_up.size(); ++i) {
        const char32_t character = marked_up[i];
        if (character == U'<') {
            const std::size_t end = marked_up.find(U'>', i);
            if (end != npos) {
                if (ends_line(marked_up.substr(i + 1, end - i - 1)) && !text.empty() && text.back() != U'\n')
                    text += U'\n';
                i = end;
                continue;
            }
        } else if (character == U'&') {
            const std::size_t length = marked_up.substr(i, longest_entity).find(U';');
            const char32_t meant = length == npos ? 0 : entity(marked_up.substr(i + 1, length - 1));
            if (meant != 0) {
                text += meant;
                i += length;
                continue;
            }
        }
        text += character;
    }
    return text;
}

Text readable(char type, std::string_view data)
{
    constexpr std::string_view plain = "mltywn", marked_up = "gxhk";
    if (plain.find(type) != std::string_view::npos) return from_utf8(data);
    if (marked_up.find(type) != std::string_view::npos) return without_markup(from_utf8(data));
    return {};
}

/// Takes one field off the front of an entry's data. Fields of a small-letter type end in a zero, the others begin with
/// their size; the last field of an entry whose types are laid down once has neither.
std::string_view cut_field(char type, bool last, std::string_view& data)
{
    const bool sized = type >= 'A' && type <= 'Z';
    if (last) return std::exchange(data, {});
    if (!sized) return cut_to(data, '\0');
    const std::size_t size = cut_number(data, 4).value_or(0);
    const std::string_view field = data.substr(0, size);
    data.remove_prefix(field.size());
    return field;
}

Text body_of(std::string_view data, std::string_view types)
{
    Text body;
    const auto add = [&body](const Text& field) {
        if (!body.empty() && !field.empty()) body += U'\n';
        body += field;
    };
    for (std::size_t i = 0; i < types.size(); ++i)
        add(readable(types[i], cut_field(types[i], i + 1 == types.size(), data)));
    while (types.empty() && !data.empty()) {
        const char type = data.front();
        data.remove_prefix(1);
        add(readable(type, cut_field(type, false, data)));
    }
    return body;
}

/// Other spellings of head words; each names its entry by its place in the index.
void read_synonyms(const fs::path& base, const std::vector<Text>& heads, const EntrySink& sink, SourceSummary& summary)
{
    std::error_code error;
    fs::path file = base;
    file += ".syn";
    if (!fs::exists(file, error) && !fs::exists(file += ".dz", error)) return;
    const std::string synonyms = read_unpacked(base, {".syn", ".syn.dz"});
    for (std::string_view rest = synonyms; !rest.empty();) {
        const Text word = from_utf8(cut_to(rest, '\0'));
        const auto place = cut_number(rest, 4);
        if (!place) break;
        if (*place < heads.size()) sink({word, U"见：" + TextView(heads[*place])});
        else ++summary.damaged;
    }
}

} // namespace

SourceSummary read_stardict(const fs::path& ifo, const EntrySink& sink)
{
    const std::string information = read_unpacked(ifo, {""});
    const fs::path base = fs::path(ifo).replace_extension();
    const std::string index = read_unpacked(base, {".idx", ".idx.gz"});
    const std::string text = read_unpacked(base, {".dict.dz", ".dict"});
    const std::size_t offset_width = value_of(information, "idxoffsetbits") == "64" ? 8 : 4;
    const std::string_view types = value_of(information, "sametypesequence");

    SourceSummary summary{from_utf8(value_of(information, "bookname"))};
    std::vector<Text> heads;
    for (std::string_view rest = index; !rest.empty();) {
        heads.push_back(from_utf8(cut_to(rest, '\0')));
        const auto begin = cut_number(rest, offset_width), size = cut_number(rest, 4);
        if (!begin || !size) throw Failure(U"词典的索引已损坏：" + TextView(text_of(ifo)));
        if (*begin <= text.size() && *size <= text.size() - *begin)
            sink({heads.back(), body_of(std::string_view(text).substr(*begin, *size), types)});
        else ++summary.damaged;
    }
    read_synonyms(base, heads, sink, summary);
    return summary;
}

} // namespace tarvik
