#include "dictionary_tool/dictionary_source.h"

#include "platform/files/path_text.h"

#include <optional>

namespace tarvik {

namespace {

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

std::string_view cut_field(std::string_view& line)
{
    const std::size_t tab = line.find('\t');
    const std::string_view field = line.substr(0, tab);
    line.remove_prefix(tab == std::string_view::npos ? line.size() : tab + 1);
    return field;
}

bool tells_of_the_dictionary(std::string_view head)
{
    return head.starts_with("00-database") || head.starts_with("00database");
}

} // namespace

SourceSummary read_dictd(const std::filesystem::path& index, const EntrySink& sink)
{
    const std::string lines = read_unpacked(index, {""});
    const std::string text = read_unpacked(std::filesystem::path(index).replace_extension(), {".dict.dz", ".dict"});
    SourceSummary summary{text_of(index.stem())};
    for (std::string_view rest = lines; !rest.empty();) {
        std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        if (line.empty()) continue;
        const std::string_view head = cut_field(line);
        const auto begin = number_of(cut_field(line)), size = number_of(cut_field(line));
        if (tells_of_the_dictionary(head)) continue;
        if (begin && size && *begin <= text.size() && *size <= text.size() - *begin)
            sink({from_utf8(head), from_utf8(std::string_view(text).substr(*begin, *size))});
        else ++summary.damaged;
    }
    return summary;
}

} // namespace tarvik
