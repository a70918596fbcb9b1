#include "dictionary_tool/dictionary_source.h"

#include "platform/failure.h"
#include "platform/files/disk_file.h"
#include "platform/files/path_text.h"

#include <array>
#include <memory>
#include <new>
#include <system_error>
#include <zlib.h>

namespace tarvik {

namespace fs = std::filesystem;

namespace {

/// No dictionary for reading comes near it; what unpacks to more is damaged or made to do harm.
constexpr std::size_t most_bytes = std::size_t{256} << 20;

bool is_packed(std::string_view bytes)
{
    return bytes.starts_with("\x1f\x8b");
}

// A file that is not packed comes through as it is. What is packed may stand in several members.
std::string read_gzip(const fs::path& path)
{
    const Failure too_long(U"文件解压后超过 256 MB，不予转换：" + TextView(text_of(path)));
    std::string packed = read_file(path), bytes;
    if (packed.size() > most_bytes) throw too_long;
    if (!is_packed(packed)) return packed;
    constexpr int gzip_alone = 16 + MAX_WBITS;
    z_stream stream{};
    if (inflateInit2(&stream, gzip_alone) != Z_OK) throw std::bad_alloc();
    const std::unique_ptr<z_stream, int (*)(z_stream*)> ended(&stream, inflateEnd);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    std::array<char, 1 << 16> block{};
    for (int state = Z_OK; state == Z_OK;) {
        stream.next_out = reinterpret_cast<Bytef*>(block.data());
        stream.avail_out = block.size();
        state = inflate(&stream, Z_NO_FLUSH);
        if (state != Z_OK && state != Z_STREAM_END) throw Failure(U"文件已损坏：" + TextView(text_of(path)));
        bytes.append(block.data(), block.size() - stream.avail_out);
        if (bytes.size() > most_bytes) throw too_long;
        const auto rest = std::string_view(packed).substr(packed.size() - stream.avail_in);
        if (state == Z_STREAM_END && is_packed(rest)) state = inflateReset(&stream);
    }
    return bytes;
}

} // namespace

std::string read_unpacked(const fs::path& base, std::initializer_list<const char*> extensions)
{
    for (const char* extension : extensions) {
        fs::path path = base;
        path += extension;
        std::error_code error;
        if (!fs::is_regular_file(path, error)) continue;
        try {
            return read_gzip(path);
        } catch (const std::system_error&) {
            throw Failure(U"无法读取文件：" + TextView(text_of(path)));
        }
    }
    throw Failure(U"找不到文件：" + text_of(base) + from_utf8(*extensions.begin()));
}

SourceSummary read_dictionary_source(const fs::path& file, const EntrySink& sink)
{
    if (file.extension() == ".ifo") return read_stardict(file, sink);
    if (file.extension() == ".index") return read_dictd(file, sink);
    throw Failure(U"不认识的词典格式，应为 .ifo 或 .index 文件：" + TextView(text_of(file)));
}

} // namespace tarvik
