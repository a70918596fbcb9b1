#include "engines/documents/picture.h"

#include "engines/packages/damage.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include <zlib.h>

/// Numbers of a file are read only where they lie inside of it.
namespace tarvik::ooxml {

namespace {

constexpr std::uint64_t most_points = 80'000'000;
constexpr double usual_resolution = 96, centimetres_an_inch = 2.54, metres_an_inch = 0.0254;
constexpr std::uint64_t largest_file = 64U << 20U;
constexpr std::string_view jpeg_signature = "\xFF\xD8\xFF";
constexpr std::string_view png_signature = "\x89PNG\r\n\x1A\n";

Damage damaged()
{
    return Damage(U"图片已损坏。");
}

Damage incomplete()
{
    return Damage(U"图片不完整。");
}

enum class ByteOrder { BigEndian, LittleEndian };

/// The number in `size` bytes at `at`, or nothing where the bytes end before.
std::optional<std::uint32_t> number_at(std::string_view bytes, std::size_t at, std::size_t size,
                                       ByteOrder order = ByteOrder::BigEndian) noexcept
{
    if (at > bytes.size() || bytes.size() - at < size) return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const auto from = order == ByteOrder::BigEndian ? i : size - 1 - i;
        number = number << 8U | static_cast<unsigned char>(bytes[at + from]);
    }
    return number;
}

/// Points to an inch; 0 where none are stated.
struct Resolution {
    double across = 0;
    double down = 0;

    /// Whether it says anything of use: with too many points to the inch there would be nothing to see.
    bool is_sensible() const noexcept { return std::min(across, down) >= 1 && std::max(across, down) <= 5000; }
};

/// What a file says of its picture.
struct Header {
    std::uint32_t width = 0, height = 0; ///< in points
    Resolution resolution, of_camera;
    std::uint32_t orientation = 1; ///< 1 to 8; 1 is upright

    /// Refuses a picture without points and one with too many, before anything is taken for it.
    void check_points() const
    {
        if (width == 0 || height == 0) throw damaged();
        if (std::uint64_t{width} * height > most_points)
            throw Damage(U"图片过大：宽 " + number_text(width) + U" 点，高 " + number_text(height) + U" 点。");
    }
};

/// What a camera wrote about the picture, a file of its own without what precedes it; what is damaged in it says
/// nothing. A tag and the kind of its value are read as one number.
void read_camera_notes(std::string_view tiff, Header& header)
{
    constexpr std::uint32_t orientation = 0x0112'0003, unit = 0x0128'0003, across = 0x011A'0005, down = 0x011B'0005;
    constexpr std::uint32_t in_centimetres = 3;
    constexpr std::size_t entry_size = 12;
    header.orientation = 1;
    header.of_camera = {};
    const bool is_little = tiff.starts_with("II");
    if (!is_little && !tiff.starts_with("MM")) return;
    const auto number = [&](std::size_t at, std::size_t size) {
        return number_at(tiff, at, size, is_little ? ByteOrder::LittleEndian : ByteOrder::BigEndian).value_or(0);
    };
    const auto ratio = [&](std::size_t at) {
        const auto below = number(at + 4, 4);
        return at == 0 || below == 0 ? 0 : static_cast<double>(number(at, 4)) / below;
    };
    Resolution stated;
    double factor = 1;
    const std::size_t table = number(4, 4);
    const std::size_t room = table < tiff.size() ? (tiff.size() - table) / entry_size : 0; // whatever is stated
    // Backward, so that the first of two entries of a kind is the one that holds.
    for (auto entry = std::min<std::size_t>(number(table, 2), room); entry-- > 0;) {
        const auto at = table + 2 + entry * entry_size;
        const auto kind = number(at, 2) << 16U | number(at + 2, 2), value = number(at + 8, 2);
        if (kind == orientation) header.orientation = value >= 1 && value <= 8 ? value : 1;
        if (kind == unit) factor = value == in_centimetres ? centimetres_an_inch : 1;
        if (kind == across) stated.across = ratio(number(at + 8, 4));
        if (kind == down) stated.down = ratio(number(at + 8, 4));
    }
    header.of_camera = {stated.across * factor, stated.down * factor};
}

Picture picture_of(PictureKind kind, const Header& header)
{
    struct Showing {
        bool is_mirrored;
        int quarter_turns;
    };
    constexpr Showing showings[] = {{false, 0}, {true, 0},  {false, 2}, {true, 2},
                                    {true, 3},  {false, 1}, {true, 1},  {false, 3}}; // for the orientations
    Resolution resolution{usual_resolution, usual_resolution};
    for (const auto& stated : {header.of_camera, header.resolution})
        if (stated.is_sensible()) resolution = stated;
    const auto& showing = showings[header.orientation - 1];
    return {kind, header.width / resolution.across, header.height / resolution.down, showing.is_mirrored,
            showing.quarter_turns};
}

constexpr std::string_view jfif = std::string_view("JFIF\0", 5);
constexpr std::string_view exif = std::string_view("Exif\0\0", 6);
constexpr std::string_view end_of_image = "\xFF\xD9";
constexpr unsigned end_marker = 0xD9, start_of_scan = 0xDA, application_0 = 0xE0, application_1 = 0xE1;

constexpr bool is_frame(unsigned marker) noexcept
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Restarts, and one for temporary use.
constexpr bool stands_alone(unsigned marker) noexcept
{
    return marker == 0x01 || (marker >= 0xD0 && marker < end_marker);
}

void read_segment(unsigned marker, std::string_view body, Header& header)
{
    const auto number = [body](std::size_t at, std::size_t size) { return number_at(body, at, size).value_or(0); };
    const auto unit = number(7, 1); // else only the points' shape is stated
    if (marker == application_0 && body.starts_with(jfif) && (unit == 1 || unit == 2)) {
        const double factor = unit == 2 ? centimetres_an_inch : 1;
        header.resolution = {number(8, 2) * factor, number(10, 2) * factor};
    }
    if (marker == application_1 && body.starts_with(exif)) read_camera_notes(body.substr(exif.size()), header);
    if (!is_frame(marker)) return;
    header.width = number(3, 2);
    header.height = number(1, 2);
    header.check_points();
}

// Reads what stands before the first scan; gives where that begins.
std::size_t read_jpeg_header(std::string_view bytes, Header& header)
{
    std::size_t at = 2;
    while (true) {
        while (number_at(bytes, at, 2) == 0xFFFFU) ++at; // filling
        const auto found = number_at(bytes, at, 2);
        if (!found) throw incomplete();
        const unsigned marker = *found & 0xFFU;
        if (*found >> 8U != 0xFF || marker == end_marker) throw damaged();
        at += 2;
        if (stands_alone(marker)) continue;
        const auto length = number_at(bytes, at, 2);
        if (!length || *length > bytes.size() - at) throw incomplete();
        if (*length < 2) throw damaged();
        read_segment(marker, bytes.substr(at + 2, *length - 2), header);
        at += *length;
        if (marker == start_of_scan) return at;
    }
}

Picture read_jpeg(std::string_view bytes)
{
    Header header;
    const auto scan = read_jpeg_header(bytes, header);
    header.check_points();
    const auto end = bytes.rfind(end_of_image);
    if (end == std::string_view::npos || end < scan) throw incomplete();
    // However little there is to see, every block of 8 by 8 points takes a bit.
    constexpr std::uint64_t points_a_byte = std::uint64_t{64} * 8;
    if (std::uint64_t{header.width} * header.height / points_a_byte > end - scan) throw incomplete();
    return picture_of(PictureKind::Jpeg, header);
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
    if (!length || bytes.size() - at - 4 < type_size + std::uint64_t{*length} + 4) throw incomplete();
    const auto checked = bytes.substr(at + 4, type_size + *length);
    const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(checked.data()), checked.size());
    at += 4 + checked.size() + 4;
    if (number_at(bytes, at - 4, 4) != sum) throw damaged();
    return {checked.substr(0, type_size), checked.substr(type_size)};
}

// Each chunk has a checksum and a closing one ends the file: that the points are all there needs no inflating.
Picture read_png(std::string_view bytes)
{
    constexpr std::size_t header_size = 13;
    std::size_t at = png_signature.size();
    const auto first = next_chunk(bytes, at);
    if (first.type != "IHDR" || first.body.size() != header_size) throw damaged();
    Header header;
    header.width = *number_at(first.body, 0, 4);
    header.height = *number_at(first.body, 4, 4);
    header.check_points();
    bool has_points = false;
    for (Chunk chunk = next_chunk(bytes, at); chunk.type != "IEND"; chunk = next_chunk(bytes, at)) {
        has_points = has_points || (chunk.type == "IDAT" && !chunk.body.empty());
        if (chunk.type == "pHYs" && number_at(chunk.body, 8, 1) == 1U) // else only the points' shape is stated
            header.resolution = {*number_at(chunk.body, 0, 4) * metres_an_inch,
                                 *number_at(chunk.body, 4, 4) * metres_an_inch};
        if (chunk.type == "eXIf") read_camera_notes(chunk.body, header);
    }
    if (!has_points) throw incomplete();
    return picture_of(PictureKind::Png, header);
}

} // namespace

Picture read_picture(std::string_view bytes)
{
    if (bytes.empty()) throw Damage(U"文件是空的。");
    if (bytes.starts_with(jpeg_signature)) return read_jpeg(bytes);
    if (bytes.starts_with(png_signature)) return read_png(bytes);
    throw Damage(U"文件不是 JPEG 或 PNG 图片。");
}

PictureFile read_picture_file(const Files& files, TextView path)
{
    return naming_file(U"图片", path, [&]() -> PictureFile {
        if (files.stamp(path).size > largest_file) throw Damage(U"文件过大。");
        auto contents = files.read(path);
        const auto picture = read_picture(contents);
        return {std::move(contents), picture};
    });
}

} // namespace tarvik::ooxml
