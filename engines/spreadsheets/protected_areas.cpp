#include "engines/spreadsheets/protected_areas.h"

#include "engines/packages/relationships.h"

#include <set>

namespace tarvik::ooxml {

namespace {

void add_header(pugi::xml_node table, std::vector<Range>& headers)
{
    auto range = parse_range(attribute_text(table, "ref"));
    if (!range || table.attribute("headerRowCount").as_int(1) == 0) return;
    range->last.row = range->first.row;
    headers.push_back(*range);
}

// The body of the pivot table, and above it, with an empty row between, what its pages are chosen by: pairs of cells,
// in so many rows and with a column between the pairs.
void add_pivot(pugi::xml_node pivot, std::vector<Range>& pivots)
{
    const auto location = child_named(pivot, "location");
    const auto body = parse_range(attribute_text(location, "ref"));
    if (!body) return;
    pivots.push_back(*body);
    if (!child_named(pivot, "pageFields")) return;
    const auto count_of = [location](const char* name) {
        return parse_count(location.attribute(name).value(), last_row_of_sheet).value_or(1);
    };
    constexpr int columns_of_page = 3;
    const int rows = std::min(count_of("rowPageCount"), body->first.row - 1);
    const int columns = std::min(count_of("colPageCount"), last_column_of_sheet) * columns_of_page - 1;
    const Place first{std::max(body->first.row - 1 - rows, 1), body->first.column};
    const Place last{std::max(body->first.row - 2, 1), std::min(first.column + columns - 1, last_column_of_sheet)};
    pivots.push_back({first, last});
}

} // namespace

AreaReader::Areas AreaReader::areas_in(const XmlPart& part, bool is_table)
{
    Areas areas;
    if (is_table) add_header(part.root(), areas.headers);
    else add_pivot(part.root(), areas.pivots);
    return areas;
}

ProtectedAreas AreaReader::areas_of(std::string_view sheet_name)
{
    std::vector<Range> headers;
    std::vector<Range> pivots;
    std::set<std::string> met;
    const Relationships relationships(package_, sheet_name);
    for (const auto& one : relationships.all()) {
        const bool is_table = one.kind() == "table";
        if ((!is_table && one.kind() != "pivotTable") || !package_.has(one.target)) continue;
        const auto key = part_key(one.target);
        if (!met.insert(key).second) continue;
        auto known = known_.find(key);
        if (known == known_.end()) {
            const XmlPart part(one.target, package_.part(one.target), is_table ? "table" : "pivotTableDefinition",
                               Vocabulary::Spreadsheet);
            known = known_.emplace(key, areas_in(part, is_table)).first;
        }
        headers.insert(headers.end(), known->second.headers.begin(), known->second.headers.end());
        pivots.insert(pivots.end(), known->second.pivots.begin(), known->second.pivots.end());
    }
    return {RangeSet(headers), RangeSet(pivots)};
}

} // namespace tarvik::ooxml
