#include "dictionary_tool/dictionary_source.h"

#include "platform/failure.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>
#include <zlib.h>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

/// No dictionary for reading comes near it; what unpacks to more is damaged or made to do harm.
constexpr std::size_t most_bytes = std::size_t{256} << 20;

// A file that is not packed comes through as it is. What is packed may stand in several members.
std::string read_gzip(const fs::path& path)
{
    const Text shown = text_of(path);
#ifdef _WIN32
    const std::unique_ptr<gzFile_s, int (*)(gzFile)> file(gzopen_w(path.c_str(), "rb"), gzclose);
#else
    const std::unique_ptr<gzFile_s, int (*)(gzFile)> file(gzopen(path.c_str(), "rb"), gzclose);
#endif
    if (!file) throw Failure(U"无法读取文件：" + shown);
    std::string bytes;
    std::array<char, 1 << 16> block{};
    for (int got = 1; got > 0;) {
        got = gzread(file.get(), block.data(), block.size());
        int state = Z_OK;
        gzerror(file.get(), &state);
        if (got < 0 || state == Z_BUF_ERROR) throw Failure(U"文件已损坏：" + shown); // or cut off
        bytes.append(block.data(), static_cast<std::size_t>(got));
        if (bytes.size() > most_bytes) throw Failure(U"文件解压后超过 256 MB，不予转换：" + shown);
    }
    return bytes;
}

/// The bytes of the first file that exists among `base` with these extensions appended; one packed by gzip or dictzip
/// comes unpacked. Throws Failure when there is none or it cannot be read.
std::string read_unpacked(const fs::path& base, std::initializer_list<const char*> extensions)
{
    for (const char* extension : extensions) {
        fs::path path = base;
        path += extension;
        std::error_code error;
        if (fs::is_regular_file(path, error)) return read_gzip(path);
    }
    throw Failure(U"找不到文件：" + text_of(base) + from_utf8(*extensions.begin()));
}

/// Takes the text up to this character off the front, or all of it, and the character with it.
std::string_view cut_to(std::string_view& rest, char end)
{
    const std::string_view text = rest.substr(0, rest.find(end));
    rest.remove_prefix(std::min(text.size() + 1, rest.size()));
    return text;
}

// StarDict

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

// dictd

/// The numbers of an index are written with 64 digits, the most significant first.
std::optional<std::size_t> number_of(std::string_view digits)
{
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t most_digits = 10;
    if (digits.empty() || digits.size() > most_digits) return std::nullopt;
    std::size_t number = 0;
    for (const char digit : digits) {
        const std::size_t value = alphabet.find(digit);
        if (value == std::string_view::npos) return std::nullopt;
        number = number * alphabet.size() + value;
    }
    return number;
}

bool tells_of_the_dictionary(std::string_view head)
{
    return head.starts_with("00-database") || head.starts_with("00database");
}

SourceSummary read_dictd(const fs::path& index, const EntrySink& sink)
{
    const std::string lines = read_unpacked(index, {""});
    const std::string text = read_unpacked(fs::path(index).replace_extension(), {".dict.dz", ".dict"});
    SourceSummary summary{text_of(index.stem())};
    for (std::string_view rest = lines; !rest.empty();) {
        std::string_view line = cut_to(rest, '\n');
        if (line.empty()) continue;
        const std::string_view head = cut_to(line, '\t');
        const auto begin = number_of(cut_to(line, '\t')), size = number_of(cut_to(line, '\t'));
        if (tells_of_the_dictionary(head)) continue;
        if (begin && size && *begin <= text.size() && *size <= text.size() - *begin)
            sink({from_utf8(head), from_utf8(std::string_view(text).substr(*begin, *size))});
        else ++summary.damaged;
    }
    return summary;
}

} // namespace

SourceSummary read_dictionary_source(const fs::path& file, const EntrySink& sink)
{
    if (file.extension() == ".ifo") return read_stardict(file, sink);
    if (file.extension() == ".index") return read_dictd(file, sink);
    throw Failure(U"不认识的词典格式，应为 .ifo 或 .index 文件：" + TextView(text_of(file)));
}

} // namespace tarvik
