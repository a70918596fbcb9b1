#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/formula_index.h"

namespace tarvik::ooxml {

namespace {

constexpr std::string_view style_part = "xl/styles.xml";

// The numbers below 164 stand for formats that every spreadsheet application has.
NumberFormat built_in(unsigned number)
{
    struct Row {
        unsigned first, last;
        NumberFormat format;
    };
    constexpr Row rows[] = {{1, 13, NumberFormat::Number}, {14, 22, NumberFormat::Date},
                            {27, 36, NumberFormat::Date},  {37, 44, NumberFormat::Number},
                            {45, 47, NumberFormat::Date},  {48, 48, NumberFormat::Number},
                            {49, 49, NumberFormat::Text},  {50, 58, NumberFormat::Date}};
    for (const auto& row : rows)
        if (number >= row.first && number <= row.last) return row.format;
    return NumberFormat::General;
}

// Letters that are shown as they are do not count.
NumberFormat of_code(std::string_view code)
{
    if (code == "General") return NumberFormat::General;
    bool has_digits = false, has_text = false;
    for (std::size_t i = 0; i < code.size(); ++i) {
        switch (code[i]) {
        case '"': i = std::min(code.find('"', i + 1), code.size()); break;
        case '[': i = std::min(code.find(']', i + 1), code.size()); break;
        case '\\':
        case '_':
        case '*': ++i; break;
        case '0':
        case '#':
        case '?': has_digits = true; break;
        case '@': has_text = true; break;
        default:
            if (std::string_view("yYmMdDhHsS").find(code[i]) != std::string_view::npos) return NumberFormat::Date;
        }
    }
    return has_text && !has_digits ? NumberFormat::Text : NumberFormat::Number;
}

} // namespace

std::vector<NumberFormat> read_number_formats(const Package& package)
try {
    if (!package.has(style_part)) return {};
    const XmlPart part{std::string(style_part), package.part(style_part), "styleSheet"};
    std::map<unsigned, NumberFormat> own;
    for (const auto node : child_named(part.root(), "numFmts").children())
        own.try_emplace(node.attribute("numFmtId").as_uint(), of_code(attribute_text(node, "formatCode")));
    std::vector<NumberFormat> formats;
    for (const auto node : child_named(part.root(), "cellXfs").children()) {
        if (node.type() != pugi::node_element) continue;
        const auto number = node.attribute("numFmtId").as_uint();
        const auto found = own.find(number);
        formats.push_back(found == own.end() ? built_in(number) : found->second);
    }
    return formats;
} catch (const Damage&) {
    return {};
}

} // namespace tarvik::ooxml
