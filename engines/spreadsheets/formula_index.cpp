#include "engines/spreadsheets/formula_index.h"

#include "engines/spreadsheets/cell_values.h"
#include "engines/spreadsheets/formula_element.h"
#include "engines/spreadsheets/sheet_part.h"

#include <algorithm>
#include <utility>

namespace tarvik::ooxml {

namespace {

using calculation::FormulaPointer;

// Most areas are columns, of which the formulas are to lie together.
bool is_before(Place a, Place b) noexcept
{
    return a.column < b.column || (a.column == b.column && a.row < b.row);
}

void read_tables(const Package& package, int sheet, const std::string& part, std::map<Text, calculation::Table>& tables)
try {
    visit_related(package, part, "table", "table", [&](pugi::xml_node node) {
        const auto range = parse_range(attribute_text(node, "ref"));
        if (!range) return;
        const bool has_filter = child_named(child_named(node, "autoFilter"), "filterColumn");
        calculation::Table table{
            sheet,      *range, node.attribute("headerRowCount").as_int(1), node.attribute("totalsRowCount").as_int(0),
            has_filter, {}};
        for (const auto column : child_named(node, "tableColumns").children())
            table.columns.push_back(from_utf8(attribute_text(column, "name")));
        auto name = attribute_text(node, "displayName");
        if (name.empty()) name = attribute_text(node, "name");
        tables.try_emplace(lower(from_utf8(name)), std::move(table));
    });
} catch (const Damage&) { // NOLINT(bugprone-empty-catch): it is none
}

} // namespace

calculation::Names read_names(const Package& package, pugi::xml_node workbook, const std::vector<ListedSheet>& sheets)
{
    calculation::Names names;
    int number = 0;
    for (const auto& sheet : sheets) {
        names.sheets.emplace(lower(sheet.title), ++number);
        read_tables(package, number, sheet.part, names.tables);
    }
    for (const auto node : child_named(workbook, "definedNames").children()) {
        if (!is_named(node, "definedName")) continue;
        int sheet = 0;
        if (const auto position = node.attribute("localSheetId")) {
            const auto owner = std::ranges::find(sheets, position.as_int(-1), &ListedSheet::position);
            if (owner == sheets.end()) continue;
            sheet = static_cast<int>(owner - sheets.begin()) + 1;
        }
        names.formulas.try_emplace({lower(from_utf8(attribute_text(node, "name"))), sheet},
                                   calculation::parse(element_text(node), {1, 1}));
    }
    return names;
}

void FormulaIndex::add_sheet(const SheetCells* cells)
{
    auto& sheet = sheets_.emplace_back();
    sheet.begin = static_cast<Number>(formulas_.size());
    std::vector<Range> filled;
    std::map<std::string, std::pair<Place, FormulaPointer>> shared; // with the cells that state them, by the groups
    const auto parsed = [&](const FormulaElement& element, Place place) {
        if (const auto found = shared.find(element.group); element.is_sharing() && found != shared.end()) {
            sheet.sharers[found->second.first].push_back(place);
            return found->second.second;
        }
        auto formula = calculation::parse(element.text, place);
        if (element.is_master()) shared.insert_or_assign(element.group, std::pair(place, formula));
        return formula;
    };
    const auto add = [&](Place place, pugi::xml_node cell) {
        const FormulaElement element(cell);
        auto& formula = formulas_.emplace_back();
        formula.sheet = static_cast<int>(sheets_.size());
        formula.range = element.filled && element.filled->first == place ? *element.filled : Range{place, place};
        formula.is_array = element.kind == FormulaElement::Array;
        formula.is_volatile = element.kind == FormulaElement::DataTable;
        formula.has_result = CellValues::has_result(cell);
        if (element.kind != FormulaElement::DataTable) formula.formula = parsed(element, place);
        if (formula.range.first != formula.range.last) filled.push_back(formula.range);
    };
    if (cells) cells->visit_formulas(add);
    sheet.end = static_cast<Number>(formulas_.size());
    std::ranges::sort(formulas_.begin() + sheet.begin, formulas_.end(), is_before, &IndexedFormula::place);
    sheet.filled = RangeSet(filled);
}

std::span<const Place> FormulaIndex::sharers(int sheet, Place master) const
{
    const auto found = sheet_at(sheet).sharers.find(master);
    return found == sheet_at(sheet).sharers.end() ? std::span<const Place>() : found->second;
}

void FormulaIndex::finish()
{
    for (Number number = 0; number < formulas_.size(); ++number) {
        visit_areas(formulas_[number], number);
        if (formulas_[number].is_volatile) volatile_.push_back(number);
    }
    std::vector<std::vector<Range>> headers(sheets_.size());
    for (const auto& [name, table] : names_.tables)
        if (table.header_rows > 0)
            headers[static_cast<std::size_t>(table.sheet - 1)].push_back(
                {table.range.first, {table.range.first.row, table.range.last.column}});
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        sheets_[i].areas = RangeSet(std::exchange(sheets_[i].named, {}));
        sheets_[i].headers = RangeSet(headers[i]);
    }
}

// A formula that names too many areas to keep counts as volatile.
void FormulaIndex::visit_areas(IndexedFormula& formula, Number number)
{
    constexpr std::size_t most_of_formula = 10'000, most_of_workbook = 20'000'000;
    if (!formula.formula) return;
    std::size_t count = 0;
    const bool is_volatile = calculation::visit_areas(
        *formula.formula, {formula.sheet, formula.place()}, names_, [&](const calculation::Area& area) {
            if (area.sheet < 1 || area.sheet > static_cast<int>(sheets_.size())) return;
            if (++count > most_of_formula || ++reading_count_ > most_of_workbook) return;
            sheets_[static_cast<std::size_t>(area.sheet - 1)].named.push_back(area.range);
            sheets_[static_cast<std::size_t>(area.sheet - 1)].readers.push_back(number);
        });
    formula.is_volatile = is_volatile || count > most_of_formula || reading_count_ > most_of_workbook;
}

FormulaIndex::Number FormulaIndex::first_from(int sheet, Place place) const
{
    const auto& at = sheet_at(sheet);
    const auto found =
        std::lower_bound(formulas_.begin() + at.begin, formulas_.begin() + at.end, place,
                         [](const IndexedFormula& one, Place wanted) { return is_before(one.place(), wanted); });
    return static_cast<Number>(found - formulas_.begin());
}

FormulaIndex::Number FormulaIndex::find(int sheet, Place place) const
{
    const auto& at = sheet_at(sheet);
    const auto* range = at.filled.find(place);
    if (range) place = range->first;
    const auto number = first_from(sheet, place);
    return number < at.end && formulas_[number].place() == place ? number : none;
}

} // namespace tarvik::ooxml
