#include "engines/spreadsheets/sheet_part.h"

#include "engines/spreadsheets/workbook_model.h"

namespace tarvik::ooxml {

namespace {

void check(Place place)
{
    if (is_on_sheet(place)) return;
    throw Damage(U"工作表没有第 " + number_text(place.row) + U" 行、第 " + number_text(place.column) +
                 U" 列的单元格。");
}

bool is_nothing(const CellValue& value)
{
    const auto* text = std::get_if<Text>(&value);
    return text && text->empty();
}

bool is_formula(pugi::xml_node cell)
{
    return cell && child_named(cell, "f");
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
    const auto [row, column] = body->first;
    constexpr int columns_of_page = 3;
    const Place last{std::max(row - 2, 1), column + count_of("colPageCount") * columns_of_page - 2};
    pivots.push_back({{std::max(row - 1 - count_of("rowPageCount"), 1), column}, last});
}

} // namespace

SheetPart::SheetPart(int number, const Package& package, const std::string& name, CellValues& values,
                     WorkbookModel& workbook)
    : number_(number), part_(name, package.part(name), "worksheet"), cells_(part_.root()), merged_(part_.root()),
      values_(values), workbook_(workbook)
{
    std::vector<Range> pivots;
    visit_related(package, name, "pivotTable", "pivotTableDefinition",
                  [&](pugi::xml_node pivot) { add_pivot(pivot, pivots); });
    pivots_ = RangeSet(pivots);
    cells_.visit(whole_sheet, [&values](Place, pugi::xml_node cell) { values.check(cell); });
}

// The cell's element with its value of now, or a null node.
pugi::xml_node SheetPart::current(Place place) const
{
    check(place);
    workbook_.update(number_, {place, place});
    return cells_.find(place);
}

Text SheetPart::text(Place place) const
{
    const auto cell = current(place);
    return cell ? values_.text(cell) : Text();
}

bool SheetPart::is_empty(Place place) const
{
    const auto cell = current(place);
    return !cell || values_.is_empty(cell);
}

bool SheetPart::is_date(Place place) const
{
    return std::holds_alternative<double>(held(place)) &&
           workbook_.shows_dates(cells_.find(place).attribute("s").as_uint());
}

CellValue SheetPart::held(Place place) const
{
    const auto cell = current(place);
    if (!cell) return Text();
    const auto value = values_.value(cell);
    if (const auto* const number = std::get_if<double>(&value)) return *number;
    return values_.text(cell);
}

bool SheetPart::is_blank(const Range& range) const
{
    bool is_blank = true;
    cells_.visit(range, [&](Place, pugi::xml_node cell) { is_blank = is_blank && values_.is_empty(cell); });
    return is_blank;
}

bool SheetPart::write(Place place, const CellValue& value)
{
    check(place);
    const auto* range = merged_.find(place);
    return range ? write_to_merged(*range, place, value) : write_cell(place, value);
}

bool SheetPart::write_to_merged(const Range& range, Place place, const CellValue& value)
{
    refuse_protected(place);
    const auto outcome = merged_.write(range, place, value, held(range.first));
    if (outcome.splits) {
        workbook_.split(number_, range);
        part_.changed = true;
    }
    bool is_changed = outcome.splits;
    for (const auto& [target, its_value] : outcome.writes) is_changed = write_cell(target, its_value) || is_changed;
    return is_changed;
}

bool SheetPart::write_cell(Place place, const CellValue& value)
{
    const auto* text = std::get_if<Text>(&value);
    if (is_nothing(value) && is_empty(place)) return false;
    if (text && is_header(place) && this->text(place) == *text) return false;
    refuse_protected(place);
    release({place, place}, {place});
    const auto cell = is_nothing(value) ? cells_.find(place) : cells_.ensure(place);
    const auto plain = text ? plain_number(*text) : std::get<double>(value);
    if (is_nothing(value)) values_.erase(cell);
    else if (!text || (plain && workbook_.takes_numbers(number_, place, cell.attribute("s").as_uint()))) {
        values_.write_number(cell, *plain);
    } else {
        values_.write_text(cell, *text);
    }
    workbook_.touch(number_, place);
    part_.changed = true;
    return true;
}

bool SheetPart::is_header(Place place) const
{
    return workbook_.recalculation().index().headers(number_).contains(place);
}

void SheetPart::refuse_protected(Place place) const
{
    const auto refused = [place](const char32_t* why) {
        return Damage(U"单元格 " + from_utf8(place_name(place)) + why);
    };
    if (is_header(place)) throw refused(U" 是表格的列标题，不能改写。");
    if (pivots_.contains(place)) throw refused(U" 属于数据透视表，不能改写。");
}

// The cells of the range that are not empty, array formulas as a whole.
std::vector<Place> SheetPart::filled_cells(const Range& range)
{
    workbook_.update(number_, range);
    std::vector<Place> filled;
    cells_.visit(range, [&](Place place, pugi::xml_node cell) {
        if (!values_.is_empty(cell)) filled.push_back(place);
    });
    for (const auto& filling : fillings(filled))
        cells_.visit(filling, [&filled](Place place, pugi::xml_node /*cell*/) { filled.push_back(place); });
    std::sort(filled.begin(), filled.end());
    filled.erase(std::unique(filled.begin(), filled.end()), filled.end());
    return filled;
}

const Range* SheetPart::filling(Place place) const
{
    return workbook_.recalculation().filling(number_, place);
}

// What array formulas and data tables fill that fill one of the cells and others.
std::vector<Range> SheetPart::fillings(const std::vector<Place>& cells) const
{
    std::vector<Range> met;
    for (const auto place : cells) {
        const auto* range = filling(place);
        if (range && std::ranges::find(met, *range) == met.end()) met.push_back(*range);
    }
    return met;
}

// All that may be overwritten lies in the area.
void SheetPart::refuse_parts(const Range& area, const std::vector<Place>& cells) const
{
    for (const auto& range : fillings(cells)) {
        if (area.contains(range)) continue;
        throw Damage(U"单元格区域 " + from_utf8(range_name(range)) +
                     U" 由一个数组公式或模拟运算表填写，不能只改其中一部分。");
    }
}

// The cells, in the order of the part, are about to be overwritten. Others that share a formula of one of them state
// their own from now on.
void SheetPart::release(const Range& area, const std::vector<Place>& cells)
{
    constexpr std::size_t most_bytes = 32U << 20U;
    refuse_parts(area, cells);
    std::vector<std::pair<FormulaElement, std::string>> left;
    std::size_t bytes = 0;
    for (const auto master : cells) {
        const FormulaElement stated(cells_.find(master));
        if (!stated.is_master()) continue;
        for (const auto place : workbook_.recalculation().index().sharers(number_, master)) {
            FormulaElement element(cells_.find(place));
            if (std::binary_search(cells.begin(), cells.end(), place) || !element.is_sharing()) continue;
            bytes += stated.text.size();
            if (bytes > most_bytes) throw Damage(U"这些单元格的公式由过多的单元格共用，不能改写。");
            left.emplace_back(element,
                              shifted_formula(stated.text, place.row - master.row, place.column - master.column));
        }
    }
    for (auto& [element, formula] : left) element.state(formula);
}

// Formulas come last: one whose result goes with the texts around it stays, as a template has it.
int SheetPart::clear(const Range& range)
{
    if (range.first.row > range.last.row || range.first.column > range.last.column) return 0;
    check(range.first);
    check(range.last);
    const auto filled = filled_cells(range);
    if (filled.empty()) return 0;
    for (const auto place : filled) refuse_protected(place);
    refuse_parts(range, filled);
    std::vector<Place> texts, formulas;
    for (const auto place : filled)
        (is_formula(cells_.find(place)) || filling(place) ? formulas : texts).push_back(place);
    erase(range, texts);
    std::erase_if(formulas, [this](Place place) { return !filling(place) && gives_nothing(place); });
    erase(range, formulas);
    return static_cast<int>(texts.size() + formulas.size());
}

// A formula that nothing at hand can calculate any more does not: it gave something before.
bool SheetPart::gives_nothing(Place place) const
{
    try {
        return is_empty(place);
    } catch (const Damage&) {
        return false;
    }
}

void SheetPart::erase(const Range& area, const std::vector<Place>& places)
{
    release(area, places);
    for (const auto place : places) {
        values_.erase(cells_.find(place));
        merged_.forget(place);
        workbook_.touch(number_, place);
    }
    part_.changed = part_.changed || !places.empty();
}

const XmlPart& SheetPart::part() const
{
    cells_.take_out_grown_rows();
    return part_;
}

const XmlPart& SheetPart::settle()
{
    cells_.lay_down_grown_rows();
    return part_;
}

calculation::Value SheetPart::value(Place place) const
{
    const auto cell = cells_.find(place);
    return cell ? values_.value(cell) : calculation::Value();
}

std::vector<calculation::Value> SheetPart::values(const Range& range) const
{
    std::vector<calculation::Value> values;
    for (int row = range.first.row; row <= range.last.row; ++row)
        for (int column = range.first.column; column <= range.last.column; ++column)
            values.push_back(value({row, column}));
    return values;
}

void SheetPart::visit_values(const Range& area, const calculation::CellSource::Visitor& visitor) const
{
    cells_.visit(area, [&](Place place, pugi::xml_node cell) { visitor(place, values_.value(cell)); });
}

bool SheetPart::is_row_hidden(int row) const
{
    return cells_.row(row).attribute("hidden").as_bool();
}

bool SheetPart::is_row_filtered(int row) const
{
    const auto filter = child_named(part_.root(), "autoFilter");
    if (!child_named(filter, "filterColumn") || !is_row_hidden(row)) return false;
    const auto range = parse_range(attribute_text(filter, "ref"));
    return range && row > range->first.row && row <= range->last.row;
}

void SheetPart::set_result(Place place, const calculation::Value& result)
{
    CellValues::write_result(cells_.ensure(place), result);
    part_.changed = true;
}

void SheetPart::drop_results(const Range& range)
{
    cells_.visit(range, [this](Place, pugi::xml_node cell) {
        if (CellValues::drop_result(cell)) part_.changed = true;
    });
}

} // namespace tarvik::ooxml
