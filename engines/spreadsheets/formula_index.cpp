#include "engines/spreadsheets/formula_index.h"

#include "engines/spreadsheets/calculation/tokens.h"
#include "engines/spreadsheets/sheet_part.h"

#include <algorithm>

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

std::string corner_text(const calculation::Corner& corner)
{
    std::string text;
    if (corner.column) text += (corner.is_column_fixed ? "$" : "") + column_name(*corner.column);
    if (corner.row) text += (corner.is_row_fixed ? "$" : "") + std::to_string(*corner.row);
    return text;
}

} // namespace

FormulaElement::FormulaElement(pugi::xml_node cell) : node(child_named(cell, "f")), text(element_text(node))
{
    const std::string_view type = node.attribute("t").value();
    kind = type == "shared" ? Shared : type == "array" ? Array : type == "dataTable" ? DataTable : Usual;
    has_range = node.attribute("ref");
    if (kind == Shared) group = attribute_text(node, "si");
    if (kind == Array || kind == DataTable) filled = parse_range(attribute_text(node, "ref"));
}

std::string shifted_formula(std::string_view formula, int rows, int columns)
{
    using calculation::TokenKind;
    std::string shifted;
    std::size_t copied = 0;
    calculation::Tokens tokens(formula);
    for (auto token = tokens.next(); token.kind != TokenKind::End; token = tokens.next()) {
        if (token.kind == TokenKind::Bad) break; // the rest is no formula
        if (token.kind != TokenKind::Cell && token.kind != TokenKind::Lines) continue;
        const auto start = static_cast<std::size_t>(token.text.data() - formula.data());
        shifted += formula.substr(copied, start - copied);
        copied = start + token.text.size();
        shifted += corner_text(token.first.moved(rows, columns));
        if (token.kind == TokenKind::Lines) shifted += ":" + corner_text(token.last.moved(rows, columns));
    }
    return shifted += formula.substr(copied);
}

void FormulaElement::state(const std::string& formula)
{
    set_raw_text(node, escaped(formula));
    for (const char* name : {"t", "ref", "si"}) node.remove_attribute(name);
}

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

FormulaIndex::FormulaIndex(calculation::Names names, std::vector<NumberFormat> formats,
                           std::span<const SheetCells* const> sheets)
    : names_(std::move(names)), formats_(std::move(formats)), sheets_(sheets.size())
{
    for (std::size_t i = 0; i < sheets.size(); ++i)
        if (sheets[i]) add_sheet(*sheets[i], sheets_[i]);
    find_areas();
    std::vector<std::vector<Range>> headers(sheets_.size());
    for (const auto& [name, table] : names_.tables)
        if (table.header_rows > 0)
            headers[static_cast<std::size_t>(table.sheet - 1)].push_back(
                {table.range.first, {table.range.first.row, table.range.last.column}});
    for (std::size_t i = 0; i < sheets_.size(); ++i) sheets_[i].headers = RangeSet(headers[i]);
}

void FormulaIndex::add_sheet(const SheetCells& cells, Sheet& sheet)
{
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
    cells.visit(whole_sheet, [&](Place place, pugi::xml_node cell) {
        if (!child_named(cell, "f")) return;
        const FormulaElement element(cell);
        auto& formula = formulas_.emplace_back();
        formula.sheet = static_cast<int>(&sheet - sheets_.data()) + 1;
        formula.range = element.filled && element.filled->first == place ? *element.filled : Range{place, place};
        formula.is_array = element.kind == FormulaElement::Array;
        formula.is_volatile = element.kind == FormulaElement::DataTable;
        formula.has_result = CellValues::has_result(cell);
        if (element.kind != FormulaElement::DataTable) formula.formula = parsed(element, place);
        if (formula.range.first != formula.range.last) filled.push_back(formula.range);
    });
    sheet.end = static_cast<Number>(formulas_.size());
    std::ranges::sort(formulas_.begin() + sheet.begin, formulas_.end(), is_before, &IndexedFormula::place);
    sheet.filled = RangeSet(filled);
}

std::span<const Place> FormulaIndex::sharers(int sheet, Place master) const
{
    const auto found = sheet_at(sheet).sharers.find(master);
    return found == sheet_at(sheet).sharers.end() ? std::span<const Place>() : found->second;
}

// A formula that names too many areas to keep counts as volatile.
void FormulaIndex::find_areas()
{
    constexpr std::size_t most_of_formula = 10'000, most_of_workbook = 20'000'000;
    std::vector<std::vector<Range>> named(sheets_.size());
    std::size_t count_of_all = 0;
    for (Number number = 0; number < formulas_.size(); ++number) {
        auto& one = formulas_[number];
        std::size_t count = 0;
        const auto keep = [&](const calculation::Area& area) {
            if (area.sheet < 1 || area.sheet > static_cast<int>(sheets_.size())) return;
            if (++count > most_of_formula || ++count_of_all > most_of_workbook) return;
            const auto sheet = static_cast<std::size_t>(area.sheet - 1);
            named[sheet].push_back(area.range);
            sheets_[sheet].readers.push_back(number);
        };
        if (one.formula)
            one.is_volatile = calculation::visit_areas(*one.formula, {one.sheet, one.place()}, names_, keep) ||
                              count > most_of_formula || count_of_all > most_of_workbook;
        if (one.is_volatile) volatile_.push_back(number);
    }
    for (std::size_t i = 0; i < sheets_.size(); ++i) sheets_[i].areas = RangeSet(named[i]);
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
