#include "engines/documents/picture_formats.h"

#include <algorithm>
#include <array>
#include <vector>

#include <zlib.h>

namespace tarvik::ooxml {

namespace {

constexpr double metres_an_inch = 0.0254;

Damage damaged()
{
    return Damage(U"图片已损坏。");
}

// What the picture says of its points.
struct Header {
    PointSize size;
    std::uint32_t depth;
    std::uint32_t colours;
    bool is_interlaced;
};

struct ColourKind {
    std::uint32_t number;
    std::uint32_t channels;
    std::string_view depths; // bits a channel that it may have
};
constexpr std::array<ColourKind, 5> colour_kinds{
    {{0, 1, "\1\2\4\10\20"}, {2, 3, "\10\20"}, {3, 1, "\1\2\4\10"}, {4, 2, "\10\20"}, {6, 4, "\10\20"}}};

// One pass over the points: where it begins and how far it steps.
struct Pass {
    std::uint32_t left, top, across, down;
};
constexpr std::array<Pass, 1> plain_passes{{{0, 0, 1, 1}}};
constexpr std::array<Pass, 7> interlaced_passes{
    {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4}, {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}}};

Header read_header(std::string_view body)
{
    constexpr std::size_t header_size = 13;
    if (body.size() != header_size) throw damaged();
    const auto byte = [body](std::size_t at) { return *number_at(body, at, 1); };
    Header header{{*number_at(body, 0, 4), *number_at(body, 4, 4)}, byte(8), byte(9), byte(12) == 1};
    check_points(header.size);
    const bool is_known = std::any_of(colour_kinds.begin(), colour_kinds.end(), [&](const ColourKind& kind) {
        return kind.number == header.colours &&
               kind.depths.find(static_cast<char>(header.depth)) != std::string_view::npos;
    });
    if (!is_known || byte(10) != 0 || byte(11) != 0 || byte(12) > 1) throw damaged();
    return header;
}

// The bytes that all points take once they are inflated.
std::uint64_t inflated_size(const Header& header)
{
    const auto kind = std::find_if(colour_kinds.begin(), colour_kinds.end(),
                                   [&](const ColourKind& one) { return one.number == header.colours; });
    const std::uint64_t bits = std::uint64_t{header.depth} * kind->channels;
    const auto count = [](std::uint32_t size, std::uint32_t first, std::uint32_t step) -> std::uint64_t {
        return size > first ? (size - first - 1) / step + 1 : 0;
    };
    const auto sum = [&](const auto& passes) {
        std::uint64_t bytes = 0;
        for (const Pass& pass : passes) {
            const auto columns = count(header.size.width, pass.left, pass.across);
            const auto rows = count(header.size.height, pass.top, pass.down);
            if (columns > 0) bytes += rows * (1 + (columns * bits + 7) / 8);
        }
        return bytes;
    };
    return header.is_interlaced ? sum(interlaced_passes) : sum(plain_passes);
}

// Inflates the points piece by piece and only counts them.
class PointCounter {
public:
    PointCounter() : buffer_(std::size_t{1} << 16U)
    {
        if (inflateInit(&stream_) != Z_OK) throw std::bad_alloc();
    }
    PointCounter(const PointCounter&) = delete;
    PointCounter& operator=(const PointCounter&) = delete;
    ~PointCounter() { inflateEnd(&stream_); }

    // Takes the next compressed bytes; nothing is done any more once there are `enough`.
    void add(std::string_view compressed, std::uint64_t enough)
    {
        // zlib reads through a pointer to non-const and writes nothing there.
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(compressed.data()));
        stream_.avail_in = static_cast<uInt>(compressed.size());
        for (int state = Z_OK; count_ < enough && state == Z_OK;) {
            stream_.next_out = buffer_.data();
            stream_.avail_out = static_cast<uInt>(buffer_.size());
            state = inflate(&stream_, Z_NO_FLUSH);
            if (state != Z_OK && state != Z_STREAM_END && state != Z_BUF_ERROR) throw damaged();
            count_ += buffer_.size() - stream_.avail_out;
        }
    }
    std::uint64_t count() const noexcept { return count_; }

private:
    z_stream stream_{};
    std::vector<Bytef> buffer_;
    std::uint64_t count_ = 0;
};

Resolution read_resolution(std::string_view body)
{
    if (number_at(body, 8, 1) != 1U) return {}; // only the points' shape is told
    return {*number_at(body, 0, 4) * metres_an_inch, *number_at(body, 4, 4) * metres_an_inch};
}

struct Chunk {
    std::string_view type;
    std::string_view body;
};

// The chunk at `at`, which is moved behind it.
Chunk next_chunk(std::string_view bytes, std::size_t& at)
{
    constexpr std::size_t type_size = 4;
    const auto length = number_at(bytes, at, 4);
    if (!length || bytes.size() - at - 4 < type_size + std::uint64_t{*length} + 4) throw Damage(U"图片不完整。");
    const auto checked = bytes.substr(at + 4, type_size + *length);
    const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(checked.data()), checked.size());
    at += 4 + checked.size() + 4;
    if (number_at(bytes, at - 4, 4) != sum) throw damaged();
    return {checked.substr(0, type_size), checked.substr(type_size)};
}

} // namespace

Picture read_png(std::string_view bytes)
{
    std::size_t at = png_signature.size();
    const auto first = next_chunk(bytes, at);
    if (first.type != "IHDR") throw damaged();
    const auto header = read_header(first.body);
    const auto enough = inflated_size(header);
    Resolution resolution;
    CameraNotes notes;
    PointCounter points;
    for (Chunk chunk = next_chunk(bytes, at); chunk.type != "IEND"; chunk = next_chunk(bytes, at)) {
        if (chunk.type == "IDAT") points.add(chunk.body, enough);
        if (chunk.type == "pHYs") resolution = read_resolution(chunk.body);
        if (chunk.type == "eXIf") notes = read_camera_notes(chunk.body);
    }
    if (points.count() < enough) throw Damage(U"图片不完整。");
    return make_picture(PictureKind::Png, header.size, resolution, notes);
}

} // namespace tarvik::ooxml
