#include "engines/spreadsheets/formula_index.h"

#include "engines/spreadsheets/cell_values.h"
#include "engines/spreadsheets/formula_groups.h"

#include <algorithm>

namespace tarvik::ooxml {

namespace {

using calculation::FormulaPointer;

// The formulas of a sheet as its part states them, those that share one with it.
class FormulaReader {
public:
    IndexedFormula read(int sheet, Place place, pugi::xml_node cell)
    {
        const FormulaElement element(cell);
        IndexedFormula formula{nullptr,
                               sheet,
                               {place, place},
                               element.kind == FormulaElement::Array,
                               element.kind == FormulaElement::DataTable,
                               CellValues::has_result(cell)};
        if (element.filled && element.filled->first == place) formula.range = *element.filled;
        if (element.kind != FormulaElement::DataTable) formula.formula = parsed(element, place);
        return formula;
    }

private:
    FormulaPointer parsed(const FormulaElement& element, Place place)
    {
        const auto found = shared_.find(element.group);
        if (element.kind == FormulaElement::Shared && element.text.empty() && found != shared_.end())
            return found->second;
        auto formula = calculation::parse(element.text, place);
        if (element.is_master()) shared_.insert_or_assign(element.group, formula);
        return formula;
    }

    std::map<std::string, FormulaPointer> shared_; // by the groups
};

} // namespace

FormulaIndex::FormulaIndex(WorkbookNames names, NumberFormats formats)
    : names_(std::move(names)), formats_(std::move(formats))
{
}

void FormulaIndex::add_sheet(const SheetCells* cells)
{
    auto& sheet = sheets_.emplace_back();
    sheet.begin = static_cast<Number>(formulas_.size());
    FormulaReader reader;
    if (cells) {
        cells->visit_formulas([&](Place place, pugi::xml_node cell) {
            formulas_.push_back(reader.read(static_cast<int>(sheets_.size()), place, cell));
            if (const auto& range = formulas_.back().range; range.first != range.last) sheet.filled.push_back(range);
        });
    }
    sheet.end = static_cast<Number>(formulas_.size());
    sheet.filled_set = RangeSet(sheet.filled);
}

void FormulaIndex::finish()
{
    for (Number number = 0; number < formulas_.size(); ++number) {
        visit_areas(formulas_[number], number);
        if (formulas_[number].is_volatile) volatile_.push_back(number);
    }
    for (auto& sheet : sheets_) {
        std::ranges::sort(sheet.readings, [](const Reading& a, const Reading& b) {
            if (a.area.first != b.area.first) return a.area.first < b.area.first;
            if (a.area.last != b.area.last) return a.area.last < b.area.last;
            return a.formula < b.formula;
        });
        std::vector<Range> areas;
        for (const auto& reading : sheet.readings) {
            if (areas.empty() || areas.back() != reading.area) {
                areas.push_back(reading.area);
                sheet.readers.ends.push_back(sheet.readers.formulas.size());
            }
            sheet.readers.formulas.push_back(reading.formula);
            sheet.readers.ends.back() = sheet.readers.formulas.size();
        }
        sheet.readers.areas = RangeSet(areas);
        sheet.readings = {};
    }
}

// A formula that names too many areas to keep counts as volatile.
void FormulaIndex::visit_areas(IndexedFormula& formula, Number number)
{
    constexpr std::size_t most_of_formula = 10'000, most_of_workbook = 20'000'000;
    if (!formula.formula) return;
    std::size_t count = 0;
    const bool is_volatile = calculation::visit_areas(
        *formula.formula, {formula.sheet, formula.place()}, names_, [&](int sheet, const Range& area) {
            if (sheet < 1 || sheet > static_cast<int>(sheets_.size())) return;
            if (++count > most_of_formula || ++reading_count_ > most_of_workbook) return;
            sheets_[static_cast<std::size_t>(sheet - 1)].readings.push_back({area, number});
        });
    formula.is_volatile = is_volatile || count > most_of_formula || reading_count_ > most_of_workbook;
}

std::span<const FormulaIndex::Number> FormulaIndex::readers(int sheet, std::size_t area) const
{
    const auto& readers = sheet_at(sheet).readers;
    const auto begin = area == 0 ? 0 : readers.ends[area - 1];
    return std::span(readers.formulas).subspan(begin, readers.ends[area] - begin);
}

FormulaIndex::Number FormulaIndex::find(int sheet, Place place) const
{
    const auto& at = sheet_at(sheet);
    const auto* range = at.filled_set.find(place);
    if (range) place = range->first;
    const auto begin = formulas_.begin() + at.begin, end = formulas_.begin() + at.end;
    const auto found = std::lower_bound(begin, end, place,
                                        [](const IndexedFormula& one, Place wanted) { return one.place() < wanted; });
    return found != end && found->place() == place ? static_cast<Number>(found - formulas_.begin()) : none;
}

std::vector<FormulaIndex::Number> FormulaIndex::find(int sheet, const Range& range) const
{
    const auto& at = sheet_at(sheet);
    std::vector<Number> found;
    const auto begin = formulas_.begin() + at.begin, end = formulas_.begin() + at.end;
    auto one = std::lower_bound(begin, end, range.first,
                                [](const IndexedFormula& a, Place wanted) { return a.place() < wanted; });
    for (; one != end && one->place().row <= range.last.row; ++one)
        if (range.contains(one->place())) found.push_back(static_cast<Number>(one - formulas_.begin()));
    for (const auto& filled : at.filled)
        if (filled.overlaps(range) && !range.contains(filled.first)) found.push_back(find(sheet, filled.first));
    return found;
}

} // namespace tarvik::ooxml
