#include "engines/spreadsheets/sheet_look.h"

#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/calculation/places.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

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

// The one of that number; the plain look where there is none.
const CellLook& at(const std::vector<CellLook>& looks, pugi::xml_attribute number)
{
    static const CellLook plain;
    return number.as_uint() < looks.size() ? looks[number.as_uint()] : plain;
}

// The looks that the cells of a workbook name by number, from its style and theme parts.
std::vector<CellLook> read_looks(const Package& package)
{
    std::vector<CellLook> fonts, fills, borders, looks;
    if (!package.has(style_part)) return looks;
    const Theme theme(package);
    const XmlPart part{std::string(style_part), package.part(style_part), "styleSheet"};
    const auto list = [&](std::string_view name) { return elements(child_named(part.root(), name)); };
    // Each is read once, however many entries name it.
    for (const pugi::xml_node font : list("fonts")) set_font(fonts.emplace_back(), font, theme);
    for (const pugi::xml_node fill : list("fills")) set_fill(fills.emplace_back(), fill, theme);
    for (const pugi::xml_node sides : list("borders")) set_borders(borders.emplace_back(), sides, theme);
    for (const pugi::xml_node entry : list("cellXfs")) {
        CellLook& look = looks.emplace_back(at(fonts, entry.attribute("fontId")));
        look.fill = at(fills, entry.attribute("fillId")).fill;
        const CellLook& sides = at(borders, entry.attribute("borderId"));
        look.left = sides.left;
        look.top = sides.top;
        look.right = sides.right;
        look.bottom = sides.bottom;
        const auto alignment_element = child_named(entry, "alignment");
        look.alignment = alignment(attribute_text(alignment_element, "horizontal"));
        look.wraps = alignment_element.attribute("wrapText").as_bool();
    }
    return looks;
}

constexpr double usual_row_height = 15, usual_column_width = 8.43; // points; characters
constexpr double pixels_a_character = 7, pixels_around = 5, points_a_pixel = 0.75;
constexpr double most_points = 600; // a row or column is never drawn larger

double width_in_points(double characters)
{
    return std::clamp((characters * pixels_a_character + pixels_around) * points_a_pixel, 0.0, most_points);
}

class Reader {
public:
    Reader(pugi::xml_node worksheet, const Package& package) : worksheet_(worksheet), styles_(read_looks(package))
    {
        for (const auto row : child_named(worksheet_, "sheetData").children())
            for (const auto cell : row.children())
                if (const auto place = parse_place(cell.attribute("r").value())) take(*place, cell);
        for (const auto merge : child_named(worksheet_, "mergeCells").children())
            if (const auto range = parse_range(merge.attribute("ref").value())) take(*range);
    }

    SheetPicture picture(int rows, int columns)
    {
        size_ = {std::clamp(std::max(rows, used_.row), 1, PicturedSheet::most_rows),
                 std::clamp(std::max(columns, used_.column), 1, PicturedSheet::most_columns)};
        SheetPicture picture{column_widths(), row_heights(), {}};
        for (const auto& [place, look] : looks_)
            if (is_inside(place) && !is_covered(place)) picture.cells.push_back(cell(place, *look));
        return picture;
    }

private:
    void take(Place place, pugi::xml_node cell)
    {
        looks_[place] = &at(styles_, cell.attribute("s"));
        use(place);
    }
    void take(const Range& range)
    {
        // Of ranges that begin outside of what can be shown nothing is seen.
        if (range.first.row > PicturedSheet::most_rows || range.first.column > PicturedSheet::most_columns) return;
        merged_[range.first] = range;
        looks_.try_emplace(range.first, &at(styles_, {}));
        use(range.last);
    }
    void use(Place place)
    {
        if (place.row > PicturedSheet::most_rows || place.column > PicturedSheet::most_columns) return;
        used_ = {std::max(used_.row, place.row), std::max(used_.column, place.column)};
    }

    bool is_inside(Place place) const { return place.row <= size_.row && place.column <= size_.column; }
    bool is_covered(Place place) const
    {
        return std::ranges::any_of(
            merged_, [place](const auto& merge) { return merge.second.contains(place) && merge.first != place; });
    }

    PicturedCell cell(Place place, const CellLook& look) const
    {
        PicturedCell result{.row = place.row, .column = place.column, .look = look};
        const auto merge = merged_.find(place);
        if (merge == merged_.end()) return result;
        // The far sides of a range are its far cells' affair.
        const Place last = merge->second.last;
        result.rows = std::min(last.row, size_.row) - place.row + 1;
        result.columns = std::min(last.column, size_.column) - place.column + 1;
        if (const auto corner = looks_.find(last); corner != looks_.end()) {
            result.look.right = corner->second->right;
            result.look.bottom = corner->second->bottom;
        }
        return result;
    }

    std::vector<double> column_widths() const
    {
        const auto format = child_named(worksheet_, "sheetFormatPr");
        const double usual = format.attribute("defaultColWidth").as_double(usual_column_width);
        std::vector<double> widths(static_cast<std::size_t>(size_.column), width_in_points(usual));
        for (const auto column : child_named(worksheet_, "cols").children()) {
            const double width =
                column.attribute("hidden").as_bool() ? 0 : width_in_points(column.attribute("width").as_double(usual));
            const int last = std::min(column.attribute("max").as_int(), size_.column);
            for (int i = std::max(1, column.attribute("min").as_int(1)); i <= last; ++i)
                widths[static_cast<std::size_t>(i - 1)] = width;
        }
        return widths;
    }

    std::vector<double> row_heights() const
    {
        const auto format = child_named(worksheet_, "sheetFormatPr");
        const double usual = format.attribute("defaultRowHeight").as_double(usual_row_height);
        std::vector<double> heights(static_cast<std::size_t>(size_.row), usual);
        for (const auto row : child_named(worksheet_, "sheetData").children()) {
            const int number = row.attribute("r").as_int();
            if (number < 1 || number > size_.row) continue;
            const double height = row.attribute("hidden").as_bool() ? 0 : row.attribute("ht").as_double(usual);
            heights[static_cast<std::size_t>(number - 1)] = std::clamp(height, 0.0, most_points);
        }
        return heights;
    }

    pugi::xml_node worksheet_;
    std::vector<CellLook> styles_;
    std::map<Place, const CellLook*> looks_;
    std::map<Place, Range> merged_; // by their first cells
    Place used_{1, 1}, size_{1, 1};
};

} // namespace

SheetPicture sheet_look(pugi::xml_node worksheet, const Package& package, int rows, int columns)
{
    return Reader(worksheet, package).picture(rows, columns);
}

} // namespace tarvik::ooxml
