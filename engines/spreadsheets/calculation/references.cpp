#include "engines/spreadsheets/calculation/formula.h"

#include <algorithm>

namespace tarvik::calculation {

namespace {

constexpr int deepest_names = 20;

std::optional<int> column_of(const Table& table, const Text& name)
{
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        if (lower(TextView(table.columns[i])) == name) return table.range.first.column + static_cast<int>(i);
    return std::nullopt;
}

std::optional<int> find_sheet(const Text& name, const Names& names)
{
    const auto found = names.sheets.find(name);
    return found == names.sheets.end() ? std::nullopt : std::optional(found->second);
}

// Formulas in a table need not name it.
const Table* find_table(const Text& name, const CellAddress& at, const Names& names)
{
    const auto is_around = [&at](const auto& one) {
        return one.second.sheet == at.sheet && one.second.range.contains(at.place);
    };
    const auto found = name.empty() ? std::ranges::find_if(names.tables, is_around) : names.tables.find(name);
    return found == names.tables.end() ? nullptr : &found->second;
}

// `depth` counts names within names.
bool visit_node(const Node& node, const CellAddress& at, const Names& names, const AreaVisitor& visitor, int depth)
{
    bool is_volatile = false;
    Operand operand;
    if (const auto* const area = std::get_if<AreaReference>(&node.content)) operand = resolve(*area, at, names);
    if (const auto* const table = std::get_if<TableReference>(&node.content)) operand = resolve(*table, at, names);
    if (const auto* const areas = std::get_if<Areas>(&operand)) std::ranges::for_each(*areas, std::cref(visitor));
    if (const auto* const name = std::get_if<NameReference>(&node.content)) {
        const auto formula = find_formula(*name, at, names);
        is_volatile = formula && formula->is_volatile;
        if (formula && depth < deepest_names)
            is_volatile = visit_node(formula->root, at, names, visitor, depth + 1) || is_volatile;
    }
    for (const auto& child : node.children) is_volatile = visit_node(child, at, names, visitor, depth) || is_volatile;
    return is_volatile;
}

} // namespace

Corner Corner::moved(int rows, int columns) const noexcept
{
    Corner corner = *this;
    if (row && !is_row_fixed) corner.row = ooxml::wrapped(*row + rows, ooxml::last_row_of_sheet);
    if (column && !is_column_fixed) corner.column = ooxml::wrapped(*column + columns, ooxml::last_column_of_sheet);
    return corner;
}

Operand resolve(const AreaReference& reference, const CellAddress& at, const Names& names)
{
    int first = at.sheet, last = at.sheet;
    if (!reference.first_sheet.empty()) {
        const auto one = find_sheet(reference.first_sheet, names), other = find_sheet(reference.last_sheet, names);
        if (!one || !other) return Value(CellError::Reference);
        first = std::min(*one, *other);
        last = std::max(*one, *other);
    }
    const auto place_of = [&](const Corner& written, Place otherwise) {
        const auto corner = written.moved(at.place.row - reference.home.row, at.place.column - reference.home.column);
        return Place{corner.row.value_or(otherwise.row), corner.column.value_or(otherwise.column)};
    };
    const Place first_place = place_of(reference.first, ooxml::whole_sheet.first);
    Range range{first_place, first_place};
    range.include(place_of(reference.last, ooxml::whole_sheet.last));
    Areas areas;
    for (int sheet = first; sheet <= last; ++sheet) areas.push_back({sheet, range});
    return areas;
}

Operand resolve(const TableReference& reference, const CellAddress& at, const Names& names)
{
    const Table* const table = find_table(reference.table, at, names);
    if (!table) return Value(CellError::Reference);
    Range range = table->range;
    const int first_data = range.first.row + table->header_rows, last_data = range.last.row - table->totals_rows;
    if (reference.this_row) {
        if (at.place.row < first_data || at.place.row > last_data || at.sheet != table->sheet)
            return Value(CellError::Value);
        range.first.row = range.last.row = at.place.row;
    } else if (reference.headers && !reference.data) {
        if (reference.totals || table->header_rows == 0) return Value(CellError::Reference);
        range.last.row = first_data - 1;
    } else {
        if (!reference.headers) range.first.row = reference.data ? first_data : last_data + 1;
        if (!reference.totals) range.last.row = last_data;
    }
    if (range.last.row < range.first.row) return Value(CellError::Reference);
    if (!reference.first_column.empty()) {
        const auto first = column_of(*table, reference.first_column);
        const auto last = column_of(*table, reference.last_column);
        if (!first || !last) return Value(CellError::Reference);
        range.first.column = std::min(*first, *last);
        range.last.column = std::max(*first, *last);
    }
    return Areas{{table->sheet, range}};
}

FormulaPointer find_formula(const NameReference& name, const CellAddress& at, const Names& names)
{
    // A name of the whole workbook may stand behind the workbook's name.
    const auto sheet = name.sheet.empty() ? std::nullopt : find_sheet(name.sheet, names);
    for (const int owner : {sheet.value_or(at.sheet), 0}) {
        const auto found = names.formulas.find({name.name, owner});
        if (found != names.formulas.end()) return found->second;
    }
    return nullptr;
}

bool visit_areas(const Formula& formula, const CellAddress& at, const Names& names, const AreaVisitor& visitor)
{
    return visit_node(formula.root, at, names, visitor, 0) || formula.is_volatile;
}

} // namespace tarvik::calculation
