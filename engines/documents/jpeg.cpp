#include "engines/documents/picture_formats.h"

namespace tarvik::ooxml {

namespace {

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

Damage incomplete()
{
    return Damage(U"图片不完整。");
}

struct Header {
    PointSize size;
    Resolution resolution;
    CameraNotes notes;
};

void read_jfif(std::string_view body, Header& header)
{
    constexpr double centimetres_an_inch = 2.54;
    const auto unit = number_at(body, 7, 1).value_or(0);
    if (unit != 1 && unit != 2) return; // only the points' shape is stated
    const double factor = unit == 2 ? centimetres_an_inch : 1;
    header.resolution = {number_at(body, 8, 2).value_or(0) * factor, number_at(body, 10, 2).value_or(0) * factor};
}

void read_segment(unsigned marker, std::string_view body, Header& header)
{
    if (marker == Application0 && body.starts_with(jfif)) read_jfif(body, header);
    if (marker == Application1 && body.starts_with(exif)) header.notes = read_camera_notes(body.substr(exif.size()));
    if (is_frame(marker)) {
        header.size = {number_at(body, 3, 2).value_or(0), number_at(body, 1, 2).value_or(0)};
        check_points(header.size);
    }
}

// Reads what stands before the first scan; gives where that begins.
std::size_t read_header(std::string_view bytes, Header& header)
{
    std::size_t at = 2;
    while (true) {
        while (number_at(bytes, at, 2) == 0xFFFFU) ++at; // filling
        const auto told = number_at(bytes, at, 2);
        if (!told) throw incomplete();
        const unsigned marker = *told & 0xFFU;
        if (*told >> 8U != 0xFF || marker == EndOfImage) throw Damage(U"图片已损坏。");
        at += 2;
        if (stands_alone(marker)) continue;
        const auto length = number_at(bytes, at, 2);
        if (!length || *length > bytes.size() - at) throw incomplete();
        if (*length < 2) throw Damage(U"图片已损坏。");
        read_segment(marker, bytes.substr(at + 2, *length - 2), header);
        at += *length;
        if (marker == StartOfScan) return at;
    }
}

} // namespace

Picture read_jpeg(std::string_view bytes)
{
    Header header;
    const auto scan = read_header(bytes, header);
    check_points(header.size);
    const auto end = bytes.rfind(end_of_image);
    if (end == std::string_view::npos || end < scan) throw incomplete();
    // However little there is to see, every block of 8 by 8 points takes a bit.
    constexpr std::uint64_t points_a_byte = std::uint64_t{64} * 8;
    if (std::uint64_t{header.size.width} * header.size.height / points_a_byte > end - scan) throw incomplete();
    return make_picture(PictureKind::Jpeg, header.size, header.resolution, header.notes);
}

} // namespace tarvik::ooxml
