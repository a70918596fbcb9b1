#include "engines/documents/inline_drawing.h"

#include "engines/packages/xml_part.h"

#include <algorithm>
#include <array>
#include <cmath>

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

struct Value {
    std::string_view name;
    std::string text;
};

std::string filled(std::string_view text, const auto& values)
{
    std::string all;
    while (true) {
        const auto start = text.find('{');
        all += text.substr(0, start);
        if (start == std::string_view::npos) return all;
        const auto end = text.find('}', start);
        const auto name = text.substr(start + 1, end - start - 1);
        all += std::find_if(values.begin(), values.end(), [&](const Value& value) { return value.name == name; })->text;
        text.remove_prefix(end + 1);
    }
}

// Lengths of drawings are whole numbers.
std::string units(double inches)
{
    return std::to_string(std::max(0LL, std::llround(inches * units_an_inch)));
}

} // namespace

std::string inline_drawing(const Picture& picture, const Room& room, const DrawingReference& reference)
{
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
    const std::array<Value, 10> values{{{"base", std::string(reference.is_strict ? strict_base : plain_base)},
                                        {"space", reference.is_strict ? "" : "2006/"},
                                        {"width", units(std::max(picture.width * scale, 1 / units_an_inch))},
                                        {"height", units(std::max(picture.height * scale, 1 / units_an_inch))},
                                        {"beside", units(overhang)},
                                        {"above", units(-overhang)},
                                        {"number", std::to_string(reference.number)},
                                        {"name", escaped(reference.name)},
                                        {"relationship", escaped(reference.relationship)},
                                        {"turn", turn}}};
    return filled(pattern, values);
}

} // namespace tarvik::ooxml
