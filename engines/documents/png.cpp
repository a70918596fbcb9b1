#include "engines/documents/picture_formats.h"

#include <algorithm>
#include <array>

#include <zlib.h>

namespace tarvik::ooxml {

namespace {

constexpr double metres_an_inch = 0.0254;

Damage damaged()
{
    return Damage(U"图片已损坏。");
}

struct ColourKind {
    std::uint32_t number;
    std::string_view depths; // bits a channel that it may have
};
constexpr std::array<ColourKind, 5> colour_kinds{
    {{0, "\1\2\4\10\20"}, {2, "\10\20"}, {3, "\1\2\4\10"}, {4, "\10\20"}, {6, "\10\20"}}};

PointSize read_header(std::string_view body)
{
    constexpr std::size_t header_size = 13;
    if (body.size() != header_size) throw damaged();
    const auto byte = [body](std::size_t at) { return *number_at(body, at, 1); };
    const PointSize size{*number_at(body, 0, 4), *number_at(body, 4, 4)};
    check_points(size);
    const bool is_known = std::any_of(colour_kinds.begin(), colour_kinds.end(), [&](const ColourKind& kind) {
        return kind.number == byte(9) && kind.depths.find(static_cast<char>(byte(8))) != std::string_view::npos;
    });
    if (!is_known || byte(10) != 0 || byte(11) != 0 || byte(12) > 1) throw damaged();
    return size;
}

Resolution read_resolution(std::string_view body)
{
    if (number_at(body, 8, 1) != 1U) return {}; // only the points' shape is stated
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

// Each chunk has a checksum and a closing one ends the file: that the points are all there needs no inflating.
Picture read_png(std::string_view bytes)
{
    std::size_t at = png_signature.size();
    const auto first = next_chunk(bytes, at);
    if (first.type != "IHDR") throw damaged();
    const auto size = read_header(first.body);
    Resolution resolution;
    CameraNotes notes;
    bool has_points = false;
    for (Chunk chunk = next_chunk(bytes, at); chunk.type != "IEND"; chunk = next_chunk(bytes, at)) {
        has_points = has_points || (chunk.type == "IDAT" && !chunk.body.empty());
        if (chunk.type == "pHYs") resolution = read_resolution(chunk.body);
        if (chunk.type == "eXIf") notes = read_camera_notes(chunk.body);
    }
    if (!has_points) throw Damage(U"图片不完整。");
    return make_picture(PictureKind::Png, size, resolution, notes);
}

} // namespace tarvik::ooxml
