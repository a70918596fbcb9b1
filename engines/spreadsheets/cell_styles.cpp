#include "engines/spreadsheets/cell_styles.h"

#include "engines/packages/xml_part.h"
#include "platform/text/text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvik::ooxml {

namespace {

constexpr std::string_view style_part = "xl/styles.xml", theme_part = "xl/theme/theme1.xml";

// In the order of the theme's numbers; what a workbook without a theme means by them.
struct ThemeColour {
    const char* name;
    SheetColour usual;
};
constexpr std::array theme_colours{
    ThemeColour{"lt1", 0xFFFFFF},     ThemeColour{"dk1", 0x000000},     ThemeColour{"lt2", 0xE7E6E6},
    ThemeColour{"dk2", 0x44546A},     ThemeColour{"accent1", 0x4472C4}, ThemeColour{"accent2", 0xED7D31},
    ThemeColour{"accent3", 0xA5A5A5}, ThemeColour{"accent4", 0xFFC000}, ThemeColour{"accent5", 0x5B9BD5},
    ThemeColour{"accent6", 0x70AD47},
};
constexpr std::array<SheetColour, 8> indexed_colours{0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00,
                                                     0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF};

SheetColour hexadecimal(const std::string& digits)
{
    return static_cast<SheetColour>(std::strtoul(digits.c_str(), nullptr, 16) & 0xFFFFFFU);
}

/// Towards white above 0, towards black below.
SheetColour tinted(SheetColour colour, double tint)
{
    SheetColour result = 0;
    for (const unsigned shift : {16U, 8U, 0U}) {
        const double part = (colour >> shift) & 0xFFU;
        const double moved = tint < 0 ? part * (1 + tint) : part + (255 - part) * tint;
        result |= static_cast<SheetColour>(std::lround(std::clamp(moved, 0.0, 255.0))) << shift;
    }
    return result;
}

class Theme {
public:
    explicit Theme(const Package& package)
    {
        std::ranges::transform(theme_colours, colours_.begin(), &ThemeColour::usual);
        if (!package.has(theme_part)) return;
        const XmlPart part{std::string(theme_part), package.part(theme_part), "theme"};
        const auto scheme = child_named(child_named(part.root(), "themeElements"), "clrScheme");
        for (std::size_t i = 0; i < theme_colours.size(); ++i) {
            const auto entry = child_named(scheme, theme_colours[i].name);
            std::string value = attribute_text(child_named(entry, "srgbClr"), "val");
            if (value.empty()) value = attribute_text(child_named(entry, "sysClr"), "lastClr");
            if (!value.empty()) colours_[i] = hexadecimal(value);
        }
    }

    /// Nothing for an element that is missing or leaves the colour to the reader.
    std::optional<SheetColour> colour(pugi::xml_node element) const
    {
        if (!element) return std::nullopt;
        const double tint = element.attribute("tint").as_double();
        if (element.attribute("rgb")) return tinted(hexadecimal(attribute_text(element, "rgb")), tint);
        if (element.attribute("theme")) {
            const auto number = element.attribute("theme").as_uint();
            return number < colours_.size() ? std::optional(tinted(colours_[number], tint)) : std::nullopt;
        }
        const auto number = element.attribute("indexed").as_uint(64);
        return number < 16 ? std::optional(indexed_colours[number % indexed_colours.size()]) : std::nullopt;
    }

private:
    std::array<SheetColour, theme_colours.size()> colours_{};
};

bool is_on(pugi::xml_node font, const char* flag)
{
    const auto element = child_named(font, flag);
    return element && element.attribute("val").as_bool(true);
}

void set_font(CellLook& look, pugi::xml_node font, const Theme& theme)
{
    constexpr std::size_t longest_name = 200; // bytes; every look holds its own
    const auto name = attribute_text(child_named(font, "name"), "val");
    if (!name.empty() && name.size() <= longest_name) look.font = from_utf8(name);
    const double points = child_named(font, "sz").attribute("val").as_double(look.points);
    look.points = std::clamp(points, 4.0, 100.0);
    look.bold = is_on(font, "b");
    look.italic = is_on(font, "i");
    look.colour = theme.colour(child_named(font, "color")).value_or(0);
}

void set_fill(CellLook& look, pugi::xml_node fill, const Theme& theme)
{
    const auto pattern = child_named(fill, "patternFill");
    const std::string kind = attribute_text(pattern, "patternType");
    if (kind.empty() || kind == "none") return;
    look.fill = theme.colour(child_named(pattern, kind == "solid" ? "fgColor" : "bgColor"));
}

BorderLook border(pugi::xml_node side, const Theme& theme)
{
    const std::string style = attribute_text(side, "style");
    if (style.empty() || style == "none") return {};
    const int width = style == "thick" || style == "double" ? 3 : style.starts_with("medium") ? 2 : 1;
    return {width, theme.colour(child_named(side, "color")).value_or(0)};
}

void set_borders(CellLook& look, pugi::xml_node sides, const Theme& theme)
{
    look.left = border(child_named(sides, "left"), theme);
    look.top = border(child_named(sides, "top"), theme);
    look.right = border(child_named(sides, "right"), theme);
    look.bottom = border(child_named(sides, "bottom"), theme);
}

AlignmentLook alignment(const std::string& name)
{
    if (name == "center" || name == "centerContinuous" || name == "distributed") return AlignmentLook::Centre;
    if (name == "right") return AlignmentLook::Right;
    return name == "left" ? AlignmentLook::Left : AlignmentLook::General;
}

std::vector<pugi::xml_node> elements(pugi::xml_node parent)
{
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node child : parent.children())
        if (child.type() == pugi::node_element) found.push_back(child);
    return found;
}

// The one that the entry names by its number; the plain look where there is none.
const CellLook& at(const std::vector<CellLook>& looks, pugi::xml_node entry, const char* number)
{
    static const CellLook plain;
    const auto place = entry.attribute(number).as_uint();
    return place < looks.size() ? looks[place] : plain;
}

} // namespace

CellStyles::CellStyles(const Package& package)
{
    if (!package.has(style_part)) return;
    const Theme theme(package);
    const XmlPart part{std::string(style_part), package.part(style_part), "styleSheet"};
    const auto list = [&](std::string_view name) { return elements(child_named(part.root(), name)); };
    // Each is read once, however many entries name it.
    std::vector<CellLook> fonts, fills, borders;
    for (const pugi::xml_node font : list("fonts")) set_font(fonts.emplace_back(), font, theme);
    for (const pugi::xml_node fill : list("fills")) set_fill(fills.emplace_back(), fill, theme);
    for (const pugi::xml_node sides : list("borders")) set_borders(borders.emplace_back(), sides, theme);
    for (const pugi::xml_node entry : list("cellXfs")) {
        CellLook& look = looks_.emplace_back(at(fonts, entry, "fontId"));
        look.fill = at(fills, entry, "fillId").fill;
        const CellLook& sides = at(borders, entry, "borderId");
        look.left = sides.left;
        look.top = sides.top;
        look.right = sides.right;
        look.bottom = sides.bottom;
        const auto alignment_element = child_named(entry, "alignment");
        look.alignment = alignment(attribute_text(alignment_element, "horizontal"));
        look.wraps = alignment_element.attribute("wrapText").as_bool();
    }
}

} // namespace tarvik::ooxml
