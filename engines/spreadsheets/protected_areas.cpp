#include "engines/spreadsheets/protected_areas.h"

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

ProtectedAreas::ProtectedAreas(const Package& package, std::string_view sheet)
{
    std::vector<Range> header_rows, bodies;
    visit_related(package, sheet, "table", "table", [&](pugi::xml_node table) { add_header(table, header_rows); });
    visit_related(package, sheet, "pivotTable", "pivotTableDefinition",
                  [&](pugi::xml_node pivot) { add_pivot(pivot, bodies); });
    headers = RangeSet(header_rows);
    pivots = RangeSet(bodies);
}

} // namespace tarvik::ooxml
