#include "engines/documents/cell_contents.h"

#include "engines/packages/xml_part.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace tarvik::ooxml {

namespace {

constexpr double units_an_inch = 914'400;
constexpr int units_a_quarter_turn = 5'400'000;

constexpr std::string_view plain_base = "http://schemas.openxmlformats.org/";
constexpr std::string_view strict_base = "http://purl.oclc.org/ooxml/";

// A word in braces stands for a value.
constexpr std::string_view pattern =
    R"(<wp:inline xmlns:wp="{base}drawingml/{space}wordprocessingDrawing" distT="0" distB="0" distL="0" distR="0">)"
    R"(<wp:extent cx="{width}" cy="{height}"/>)"
    R"(<wp:effectExtent l="{beside}" t="{above}" r="{beside}" b="{above}"/>)"
    R"(<wp:docPr id="{number}" name="{name}"/>)"
    R"(<wp:cNvGraphicFramePr><a:graphicFrameLocks xmlns:a="{base}drawingml/{space}main" noChangeAspect="1"/>)"
    R"(</wp:cNvGraphicFramePr>)"
    R"(<a:graphic xmlns:a="{base}drawingml/{space}main"><a:graphicData uri="{base}drawingml/{space}picture">)"
    R"(<pic:pic xmlns:pic="{base}drawingml/{space}picture">)"
    R"(<pic:nvPicPr><pic:cNvPr id="{number}" name="{name}"/><pic:cNvPicPr/></pic:nvPicPr>)"
    R"(<pic:blipFill><a:blip r:embed="{relationship}" xmlns:r="{base}officeDocument/{space}relationships"/>)"
    R"(<a:stretch><a:fillRect/></a:stretch></pic:blipFill>)"
    R"(<pic:spPr><a:xfrm{turn}><a:off x="0" y="0"/><a:ext cx="{width}" cy="{height}"/></a:xfrm>)"
    R"(<a:prstGeom prst="rect"><a:avLst/></a:prstGeom></pic:spPr></pic:pic></a:graphicData></a:graphic></wp:inline>)";

std::string filled(std::string_view text, const std::map<std::string_view, std::string>& values)
{
    std::string all;
    while (true) {
        const auto start = text.find('{');
        all += text.substr(0, start);
        if (start == std::string_view::npos) return all;
        const auto end = text.find('}', start);
        all += values.at(text.substr(start + 1, end - start - 1));
        text.remove_prefix(end + 1);
    }
}

// Lengths of drawings are whole numbers.
std::string units(double inches)
{
    return std::to_string(std::max(0LL, std::llround(inches * units_an_inch)));
}

// Lengths here are twips, twentieths of a point.
constexpr double twips_an_inch = 1440;
constexpr double usual_cell_margin = 108;
constexpr double least_room = 360; // what is narrower tells nothing of use
// The line that the picture stands in and the cell's borders take the rest of the page.
constexpr double share_of_page = 0.9;

struct Unit {
    std::string_view name;
    double twips;
};
constexpr std::array<Unit, 6> measures{{{"pt", 20},
                                        {"in", twips_an_inch},
                                        {"cm", twips_an_inch / 2.54},
                                        {"mm", twips_an_inch / 25.4},
                                        {"pc", 240},
                                        {"pi", 240}}};

// A plain number is twips.
double length(const std::string& text)
{
    const double number = leading_number(from_utf8(text));
    for (const auto& unit : measures) {
        if (text.ends_with(unit.name)) return number * unit.twips;
    }
    return number;
}

double length_of(pugi::xml_node element, std::string_view attribute, double otherwise)
{
    const auto value = value_of(element, attribute);
    return value.empty() ? otherwise : length(value);
}

// A width in twips, or in parts of `whole`; 0 when it is left to the word processor.
double width_of(pugi::xml_node element, double whole)
{
    const auto type = value_of(element, "type");
    const auto value = value_of(element, "w");
    if (value.ends_with('%')) return whole * leading_number(from_utf8(value)) / 100;
    if (type == "pct") return whole * leading_number(from_utf8(value)) / 5000;
    return type == "auto" || type == "nil" ? 0 : length(value);
}

struct Size {
    double width;
    double height;
};

// The text area of the pages that the node's section has.
Size page_around(pugi::xml_node node)
{
    const auto section = node.select_node("following::*[local-name()='sectPr']").node();
    const auto size = child_named(section, "pgSz");
    const auto margins = child_named(section, "pgMar");
    const auto inside = [&](double whole, std::initializer_list<const char*> sides) {
        double rest = whole;
        for (const auto* side : sides) rest -= std::abs(length_of(margins, side, twips_an_inch));
        return rest >= least_room ? rest : whole;
    };
    return {inside(length_of(size, "w", 11'906), {"left", "right"}) - length_of(margins, "gutter", 0),
            inside(length_of(size, "h", 16'838), {"top", "bottom"})};
}

double indents(pugi::xml_node paragraph)
{
    const auto indent = child_named(child_named(paragraph, "pPr"), "ind");
    double sum = 0;
    for (const auto* name : {"left", "start", "right", "end", "firstLine"}) {
        sum += std::max(0.0, length_of(indent, name, 0));
    }
    return sum;
}

// The width of the grid columns that the cell spans; 0 where the table has no grid.
double grid_width(pugi::xml_node table, const TableCell& cell)
{
    double width = 0;
    int column = 0;
    for (const auto one : nearest(child_named(table, "tblGrid"), "gridCol")) {
        if (column >= cell.grid_column && column < cell.grid_column + cell.grid_span) width += length_of(one, "w", 0);
        ++column;
    }
    return width;
}

double cell_width(pugi::xml_node table, const TableCell& cell, const Size& page)
{
    const auto told = child_named(child_named(cell.node, "tcPr"), "tcW");
    const double whole = width_of(child_named(child_named(table, "tblPr"), "tblW"), page.width);
    const double width = width_of(told, whole > 0 ? whole : page.width);
    if (width > 0) return width;
    const double of_grid = grid_width(table, cell);
    return of_grid > 0 ? of_grid : page.width;
}

// The height of the row if it is fixed, else 0.
double fixed_height(pugi::xml_node cell)
{
    const auto height =
        child_named(child_named(cell.select_node("ancestor::*[local-name()='tr'][1]").node(), "trPr"), "trHeight");
    return value_of(height, "hRule") == "exact" ? length_of(height, "val", 0) : 0;
}

// What a picture in a paragraph of the cell can take, in inches.
Size room_in_cell(const TableCell& cell, pugi::xml_node paragraph)
{
    const auto table = cell.node.select_node("ancestor::*[local-name()='tbl'][1]").node();
    const auto page = page_around(table);
    // The cell's or the table's margin on one side, which goes by either of two names.
    const auto margin = [&](const char* side, const char* other, double usual) {
        for (const auto margins : {child_named(child_named(cell.node, "tcPr"), "tcMar"),
                                   child_named(child_named(table, "tblPr"), "tblCellMar")})
            for (const auto* name : {side, other})
                if (const auto element = child_named(margins, name)) return length_of(element, "w", usual);
        return usual;
    };
    const double width = cell_width(table, cell, page) - margin("left", "start", usual_cell_margin) -
                         margin("right", "end", usual_cell_margin) - indents(paragraph);
    double height = page.height * share_of_page;
    if (const double fixed = fixed_height(cell.node); fixed > 0) height = std::min(height, fixed);
    height -= margin("top", "top", 0) + margin("bottom", "bottom", 0);
    return {std::max(width, least_room) / twips_an_inch, std::max(height, least_room) / twips_an_inch};
}

} // namespace

std::string inline_drawing(const Picture& picture, const TableCell& cell, pugi::xml_node paragraph,
                           const DrawingReference& reference)
{
    const auto room = room_in_cell(cell, paragraph);
    // The room is for the picture as it is shown, the drawing's size is that before it is turned.
    const bool lies_across = picture.quarter_turns % 2 != 0;
    const double shown_width = lies_across ? picture.height : picture.width;
    const double shown_height = lies_across ? picture.width : picture.height;
    const double scale = std::min({1.0, room.width / shown_width, room.height / shown_height});
    const double overhang = lies_across ? (shown_width - shown_height) * scale / 2 : 0;

    std::string turn;
    if (picture.quarter_turns != 0) {
        turn = " rot=\"" + std::to_string(picture.quarter_turns * units_a_quarter_turn) + "\"";
    }
    if (picture.is_mirrored) turn += " flipH=\"1\"";
    return filled(pattern, {{"base", std::string(reference.is_strict ? strict_base : plain_base)},
                            {"space", reference.is_strict ? "" : "2006/"},
                            {"width", units(std::max(picture.width * scale, 1 / units_an_inch))},
                            {"height", units(std::max(picture.height * scale, 1 / units_an_inch))},
                            {"beside", units(overhang)},
                            {"above", units(-overhang)},
                            {"number", std::to_string(reference.number)},
                            {"name", escaped(reference.name)},
                            {"relationship", escaped(reference.relationship)},
                            {"turn", turn}});
}

} // namespace tarvik::ooxml
