#include "engines/documents/picture_formats.h"

#include <algorithm>

namespace tarvik::ooxml {

namespace {

// Tags of the notes' first table, and the kinds of their values.
constexpr std::uint32_t orientation_tag = 0x0112;
constexpr std::uint32_t across_tag = 0x011A;
constexpr std::uint32_t down_tag = 0x011B;
constexpr std::uint32_t unit_tag = 0x0128;
constexpr std::uint32_t short_kind = 3;
constexpr std::uint32_t ratio_kind = 5;

constexpr std::uint32_t in_centimetres = 3;
constexpr double centimetres_an_inch = 2.54;

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

} // namespace

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

} // namespace tarvik::ooxml
