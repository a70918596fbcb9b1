#pragma once

#include "engines/documents/picture.h"
#include "engines/packages/damage.h"

#include <algorithm>
#include <cstdint>
#include <optional>

/// The formats behind read_picture(). Numbers of a file are read only where they lie inside of it.
namespace tarvik::ooxml {

enum class ByteOrder { BigEndian, LittleEndian };

/// The number in `size` bytes at `at`, or nothing where the bytes end before.
std::optional<std::uint32_t> number_at(std::string_view bytes, std::size_t at, std::size_t size,
                                       ByteOrder order = ByteOrder::BigEndian) noexcept;

inline constexpr std::string_view jpeg_signature = "\xFF\xD8\xFF";
inline constexpr std::string_view png_signature = "\x89PNG\r\n\x1A\n";

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

/// Of the notes' own file, without what precedes it; what is damaged in it tells nothing.
CameraNotes read_camera_notes(std::string_view tiff) noexcept;

struct PointSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// Refuses a picture without points and one with too many, before anything is taken for it.
void check_points(PointSize size);
Picture make_picture(PictureKind kind, PointSize size, Resolution resolution, const CameraNotes& notes);

Picture read_jpeg(std::string_view bytes);
Picture read_png(std::string_view bytes);

} // namespace tarvik::ooxml
