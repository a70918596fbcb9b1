#include "engines/spreadsheets/calculation/references.h"

#include "engines/spreadsheets/calculation/formula.h"

#include <algorithm>

namespace tarvik::calculation {

namespace {

constexpr int deepest_names = 20;

// A reference that leaves the sheet comes back in at the other side.
int wrapped(int number, int limit) noexcept
{
    const int moved = (number - 1) % limit;
    return (moved < 0 ? moved + limit : moved) + 1;
}

Place place_of(const AreaReference::Corner& corner, Place at) noexcept
{
    return {corner.is_row_fixed ? corner.row : wrapped(at.row + corner.row, ooxml::last_row_of_sheet),
            corner.is_column_fixed ? corner.column : wrapped(at.column + corner.column, ooxml::last_column_of_sheet)};
}

std::optional<int> column_of(const Table& table, const Text& name)
{
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (lower(TextView(table.columns[i])) == name) return table.range.first.column + static_cast<int>(i);
    return std::nullopt;
}

void visit_node(const Node& node, const CellAddress& at, const CellSource& source, const AreaVisitor& visitor,
                int depth);

struct AreasOfNode {
    const CellAddress& at;
    const CellSource& source;
    const AreaVisitor& visitor;
    int depth;

    void operator()(const AreaReference& reference) const { visit(resolve(reference, at, source)); }
    void operator()(const TableReference& reference) const { visit(resolve(reference, at, source)); }
    void operator()(const NameReference& name) const
    {
        const auto formula = find_formula(name, at, source);
        if (formula && depth < deepest_names) visit_node(formula->tree().root, at, source, visitor, depth + 1);
    }
    template <typename Other>
    void operator()(const Other&) const
    {
    }

private:
    void visit(const Resolved& resolved) const
    {
        if (const auto* const areas = std::get_if<Areas>(&resolved))
            for (const auto& area : *areas) visitor(area.sheet, area.range);
    }
};

// `depth` counts names within names.
void visit_node(const Node& node, const CellAddress& at, const CellSource& source, const AreaVisitor& visitor,
                int depth)
{
    std::visit(AreasOfNode{at, source, visitor, depth}, node.content);
    for (const auto& child : node.children) visit_node(child, at, source, visitor, depth);
}

} // namespace

Resolved resolve(const AreaReference& reference, const CellAddress& at, const CellSource& source)
{
    int first = at.sheet, last = at.sheet;
    if (!reference.first_sheet.empty()) {
        const auto one = source.find_sheet(reference.first_sheet);
        const auto other =
            reference.last_sheet == reference.first_sheet ? one : source.find_sheet(reference.last_sheet);
        if (!one || !other) return CellError::Reference;
        first = std::min(*one, *other);
        last = std::max(*one, *other);
    }
    const Place corner = place_of(reference.first, at.place);
    Range range{corner, corner};
    range.include(place_of(reference.last, at.place));
    Areas areas;
    for (int sheet = first; sheet <= last; ++sheet) areas.push_back({sheet, range});
    return areas;
}

Resolved resolve(const TableReference& reference, const CellAddress& at, const CellSource& source)
{
    const Table* const table = reference.table.empty() ? source.find_table_at(at) : source.find_table(reference.table);
    if (!table) return CellError::Reference;
    Range range = table->range;
    const int first_data = range.first.row + table->header_rows, last_data = range.last.row - table->totals_rows;
    if (reference.this_row) {
        if (at.place.row < first_data || at.place.row > last_data || at.sheet != table->sheet) return CellError::Value;
        range.first.row = range.last.row = at.place.row;
    } else if (reference.headers && !reference.data) {
        if (reference.totals || table->header_rows == 0) return CellError::Reference;
        range.last.row = first_data - 1;
    } else {
        if (!reference.headers) range.first.row = reference.data ? first_data : last_data + 1;
        if (!reference.totals) range.last.row = last_data;
    }
    if (range.last.row < range.first.row) return CellError::Reference;
    if (!reference.first_column.empty()) {
        const auto first = column_of(*table, reference.first_column);
        const auto last = column_of(*table, reference.last_column);
        if (!first || !last) return CellError::Reference;
        range.first.column = std::min(*first, *last);
        range.last.column = std::max(*first, *last);
    }
    return Areas{{table->sheet, range}};
}

std::shared_ptr<const Formula> find_formula(const NameReference& name, const CellAddress& at, const CellSource& source)
{
    int sheet = at.sheet;
    if (!name.sheet.empty()) {
        // A name of the whole workbook may stand behind the workbook's name.
        sheet = source.find_sheet(name.sheet).value_or(at.sheet);
    }
    return source.find_name(name.name, sheet);
}

bool Formula::is_volatile() const noexcept
{
    return tree_->is_volatile;
}

bool Formula::has_subtotal() const noexcept
{
    return tree_->has_subtotal;
}

void visit_areas(const Formula& formula, const CellAddress& at, const CellSource& source, const AreaVisitor& visitor)
{
    visit_node(formula.tree().root, at, source, visitor, 0);
}

} // namespace tarvik::calculation
