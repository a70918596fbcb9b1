#include "office/spreadsheets/table_headers.h"

#include "office/packages/relationships.h"

namespace tarvik::ooxml {

std::vector<Range> table_headers(const Package& package, std::string_view sheet_name)
{
    std::vector<Range> headers;
    const Relationships relationships(package, sheet_name);
    for (const auto& one : relationships.all()) {
        if (one.kind() != "table" || !package.has(one.target)) continue;
        const XmlPart table(one.target, package.part(one.target), "table");
        auto range = parse_range(attribute_text(table.root(), "ref"));
        if (!range || table.root().attribute("headerRowCount").as_int(1) == 0) continue;
        range->last.row = range->first.row;
        headers.push_back(*range);
    }
    return headers;
}

} // namespace tarvik::ooxml
