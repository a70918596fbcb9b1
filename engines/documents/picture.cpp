#include "engines/documents/picture_formats.h"

#include <array>

namespace tarvik::ooxml {

namespace {

constexpr std::uint64_t most_points = 80'000'000;
constexpr double usual_resolution = 96;
constexpr std::uint64_t largest_file = 64U << 20U;

struct Showing {
    bool is_mirrored;
    int quarter_turns;
};
// For the orientations 1 to 8.
constexpr std::array<Showing, 8> showings{
    {{false, 0}, {true, 0}, {false, 2}, {true, 2}, {true, 3}, {false, 1}, {true, 1}, {false, 3}}};

} // namespace

std::optional<std::uint32_t> number_at(std::string_view bytes, std::size_t at, std::size_t size,
                                       ByteOrder order) noexcept
{
    if (at > bytes.size() || bytes.size() - at < size) return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const auto from = order == ByteOrder::BigEndian ? i : size - 1 - i;
        number = number << 8U | static_cast<unsigned char>(bytes[at + from]);
    }
    return number;
}

void check_points(PointSize size)
{
    if (size.width == 0 || size.height == 0) throw Damage(U"图片已损坏。");
    const auto points = std::uint64_t{size.width} * size.height;
    if (points > most_points) {
        throw Damage(U"图片过大：宽 " + number_text(size.width) + U" 点，高 " + number_text(size.height) + U" 点。");
    }
}

Picture make_picture(PictureKind kind, PointSize size, Resolution resolution, const CameraNotes& notes)
{
    if (!resolution.is_sensible()) resolution = notes.resolution;
    if (!resolution.is_sensible()) resolution = {usual_resolution, usual_resolution};
    const auto showing = showings[static_cast<std::size_t>(notes.orientation - 1)];
    return {kind, size.width / resolution.across, size.height / resolution.down, showing.is_mirrored,
            showing.quarter_turns};
}

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
