#include "engines/documents/picture.h"

#include "engines/packages/damage.h"

#include <algorithm>
#include <array>
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

    /// Whether it tells anything of use: with too many points to the inch there would be nothing to see.
    bool is_sensible() const noexcept { return std::min(across, down) >= 1 && std::max(across, down) <= 5000; }
};

/// What a camera wrote about the picture.
struct CameraNotes {
    Resolution resolution;
    int orientation = 1; ///< 1 to 8; 1 is upright
};

// Tags of the notes' first table, and the kinds of their values.
constexpr std::uint32_t orientation_tag = 0x0112;
constexpr std::uint32_t across_tag = 0x011A;
constexpr std::uint32_t down_tag = 0x011B;
constexpr std::uint32_t unit_tag = 0x0128;
constexpr std::uint32_t short_kind = 3;
constexpr std::uint32_t ratio_kind = 5;

constexpr std::uint32_t in_centimetres = 3;

class Notes {
public:
    Notes(std::string_view tiff, ByteOrder order) noexcept : tiff_(tiff), order_(order) {}

    std::uint32_t number(std::size_t at, std::size_t size) const noexcept
    {
        return number_at(tiff_, at, size, order_).value_or(0);
    }

    // Where the entry of the tag begins, or 0.
    std::size_t entry(std::uint32_t tag, std::uint32_t kind) const noexcept
    {
        constexpr std::size_t entry_size = 12;
        const std::size_t table = number(4, 4);
        const std::size_t room = table < tiff_.size() ? (tiff_.size() - table) / entry_size : 0; // whatever is stated
        const auto count = std::min<std::size_t>(number(table, 2), room);
        for (std::size_t i = 0; i < count; ++i) {
            const auto at = table + 2 + i * entry_size;
            if (number(at, 2) == tag && number(at + 2, 2) == kind) return at;
        }
        return 0;
    }

    std::uint32_t short_value(std::uint32_t tag) const noexcept
    {
        const auto at = entry(tag, short_kind);
        return at == 0 ? 0 : number(at + 8, 2);
    }

    double ratio(std::uint32_t tag) const noexcept
    {
        const auto at = entry(tag, ratio_kind);
        const std::size_t place = at == 0 ? 0 : number(at + 8, 4);
        const auto below = place == 0 ? 0 : number(place + 4, 4);
        return below == 0 ? 0 : static_cast<double>(number(place, 4)) / below;
    }

private:
    std::string_view tiff_;
    ByteOrder order_;
};

// Of the notes' own file, without what precedes it; what is damaged in it tells nothing.
CameraNotes read_camera_notes(std::string_view tiff) noexcept
{
    const bool is_little = tiff.starts_with("II");
    if (!is_little && !tiff.starts_with("MM")) return {};
    const Notes notes(tiff, is_little ? ByteOrder::LittleEndian : ByteOrder::BigEndian);
    CameraNotes told;
    const auto orientation = notes.short_value(orientation_tag);
    if (orientation >= 1 && orientation <= 8) told.orientation = static_cast<int>(orientation);
    const double unit = notes.short_value(unit_tag) == in_centimetres ? centimetres_an_inch : 1;
    told.resolution = {notes.ratio(across_tag) * unit, notes.ratio(down_tag) * unit};
    return told;
}

struct PointSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

// Refuses a picture without points and one with too many, before anything is taken for it.
void check_points(PointSize size)
{
    if (size.width == 0 || size.height == 0) throw damaged();
    const auto points = std::uint64_t{size.width} * size.height;
    if (points > most_points) {
        throw Damage(U"图片过大：宽 " + number_text(size.width) + U" 点，高 " + number_text(size.height) + U" 点。");
    }
}

struct Showing {
    bool is_mirrored;
    int quarter_turns;
};
// For the orientations 1 to 8.
constexpr std::array<Showing, 8> showings{
    {{false, 0}, {true, 0}, {false, 2}, {true, 2}, {true, 3}, {false, 1}, {true, 1}, {false, 3}}};

Picture make_picture(PictureKind kind, PointSize size, Resolution resolution, const CameraNotes& notes)
{
    if (!resolution.is_sensible()) resolution = notes.resolution;
    if (!resolution.is_sensible()) resolution = {usual_resolution, usual_resolution};
    const auto showing = showings[static_cast<std::size_t>(notes.orientation - 1)];
    return {kind, size.width / resolution.across, size.height / resolution.down, showing.is_mirrored,
            showing.quarter_turns};
}

constexpr std::string_view jfif = std::string_view("JFIF\0", 5);
constexpr std::string_view exif = std::string_view("Exif\0\0", 6);
constexpr std::string_view end_of_image = "\xFF\xD9";

enum Marker : unsigned {
    Restart0 = 0xD0,
    EndOfImage = 0xD9,
    StartOfScan = 0xDA,
    Application0 = 0xE0,
    Application1 = 0xE1,
    Temporary = 0x01,
};

constexpr bool is_frame(unsigned marker) noexcept
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

constexpr bool stands_alone(unsigned marker) noexcept
{
    return marker == Temporary || (marker >= Restart0 && marker <= EndOfImage);
}

struct JpegHeader {
    PointSize size;
    Resolution resolution;
    CameraNotes notes;
};

void read_jfif(std::string_view body, JpegHeader& header)
{
    const auto unit = number_at(body, 7, 1).value_or(0);
    if (unit != 1 && unit != 2) return; // only the points' shape is stated
    const double factor = unit == 2 ? centimetres_an_inch : 1;
    header.resolution = {number_at(body, 8, 2).value_or(0) * factor, number_at(body, 10, 2).value_or(0) * factor};
}

void read_segment(unsigned marker, std::string_view body, JpegHeader& header)
{
    if (marker == Application0 && body.starts_with(jfif)) read_jfif(body, header);
    if (marker == Application1 && body.starts_with(exif)) header.notes = read_camera_notes(body.substr(exif.size()));
    if (is_frame(marker)) {
        header.size = {number_at(body, 3, 2).value_or(0), number_at(body, 1, 2).value_or(0)};
        check_points(header.size);
    }
}

// Reads what stands before the first scan; gives where that begins.
std::size_t read_jpeg_header(std::string_view bytes, JpegHeader& header)
{
    std::size_t at = 2;
    while (true) {
        while (number_at(bytes, at, 2) == 0xFFFFU) ++at; // filling
        const auto told = number_at(bytes, at, 2);
        if (!told) throw incomplete();
        const unsigned marker = *told & 0xFFU;
        if (*told >> 8U != 0xFF || marker == EndOfImage) throw damaged();
        at += 2;
        if (stands_alone(marker)) continue;
        const auto length = number_at(bytes, at, 2);
        if (!length || *length > bytes.size() - at) throw incomplete();
        if (*length < 2) throw damaged();
        read_segment(marker, bytes.substr(at + 2, *length - 2), header);
        at += *length;
        if (marker == StartOfScan) return at;
    }
}

Picture read_jpeg(std::string_view bytes)
{
    JpegHeader header;
    const auto scan = read_jpeg_header(bytes, header);
    check_points(header.size);
    const auto end = bytes.rfind(end_of_image);
    if (end == std::string_view::npos || end < scan) throw incomplete();
    // However little there is to see, every block of 8 by 8 points takes a bit.
    constexpr std::uint64_t points_a_byte = std::uint64_t{64} * 8;
    if (std::uint64_t{header.size.width} * header.size.height / points_a_byte > end - scan) throw incomplete();
    return make_picture(PictureKind::Jpeg, header.size, header.resolution, header.notes);
}

PointSize read_png_header(std::string_view body)
{
    constexpr std::size_t header_size = 13;
    if (body.size() != header_size) throw damaged();
    const PointSize size{*number_at(body, 0, 4), *number_at(body, 4, 4)};
    check_points(size);
    return size;
}

Resolution read_png_resolution(std::string_view body)
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
    std::size_t at = png_signature.size();
    const auto first = next_chunk(bytes, at);
    if (first.type != "IHDR") throw damaged();
    const auto size = read_png_header(first.body);
    Resolution resolution;
    CameraNotes notes;
    bool has_points = false;
    for (Chunk chunk = next_chunk(bytes, at); chunk.type != "IEND"; chunk = next_chunk(bytes, at)) {
        has_points = has_points || (chunk.type == "IDAT" && !chunk.body.empty());
        if (chunk.type == "pHYs") resolution = read_png_resolution(chunk.body);
        if (chunk.type == "eXIf") notes = read_camera_notes(chunk.body);
    }
    if (!has_points) throw incomplete();
    return make_picture(PictureKind::Png, size, resolution, notes);
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
