#include "dictionary_tool/dictionary_source.h"

#include "platform/failure.h"
#include "platform/files/system_paths.h"

#include <array>
#include <memory>
#include <optional>
#include <system_error>
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

} // namespace

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

std::string_view cut_to(std::string_view& rest, char end)
{
    const std::string_view text = rest.substr(0, rest.find(end));
    rest.remove_prefix(std::min(text.size() + 1, rest.size()));
    return text;
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

SourceSummary read_dictionary_source(const fs::path& file, const EntrySink& sink)
{
    if (file.extension() == ".ifo") return read_stardict(file, sink);
    if (file.extension() == ".index") return read_dictd(file, sink);
    throw Failure(U"不认识的词典格式，应为 .ifo 或 .index 文件：" + TextView(text_of(file)));
}

} // namespace tarvik
