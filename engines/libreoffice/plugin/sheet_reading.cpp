#include "engines/libreoffice/plugin/sheet_reading.h"

#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>

#include <algorithm>

namespace tarvik::libreoffice {

using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;
namespace flags = css::sheet::CellFlags;

namespace {

Area around(Area area, const Area& other)
{
    if (area.empty()) return other;
    return {std::min(area.first_row, other.first_row), std::min(area.first_column, other.first_column),
            std::max(area.last_row, other.last_row), std::max(area.last_column, other.last_column)};
}

struct ErrorText {
    int number;
    const char32_t* text;
};
constexpr ErrorText error_texts[] = {
    {503, U"#NUM!"},  {519, U"#VALUE!"}, {521, U"#NULL!"}, {524, U"#REF!"},
    {525, U"#NAME?"}, {532, U"#DIV/0!"}, {32767, U"#N/A"},
};

Text error_text(int number)
{
    for (const auto& error : error_texts)
        if (error.number == number) return error.text;
    return U"#VALUE!";
}

CellValue to_value(const Any& value)
{
    double number = 0;
    rtl::OUString text;
    if (value >>= number) return number;
    value >>= text;
    return to_text(text);
}

/// Makes of the areas fewer and larger ones that still cover all, as long as what is read in vain costs less than
/// another call.
void gather(std::vector<Area>& areas)
{
    constexpr std::int64_t worth_a_call = 1'000;
    std::ranges::sort(areas, {}, &Area::first_row);
    std::vector<Area> made;
    for (const auto& area : areas) {
        const auto both = made.empty() ? Area() : around(made.back(), area);
        if (!made.empty() && both.cells() <= made.back().cells() + area.cells() + worth_a_call) made.back() = both;
        else made.push_back(area);
    }
    areas.swap(made);
}

std::vector<Place> places_in(const std::vector<Area>& areas)
{
    std::vector<Place> places;
    for (const auto& area : areas)
        for (int row = area.first_row; row <= area.last_row; ++row)
            for (int column = area.first_column; column <= area.last_column; ++column) places.push_back({row, column});
    std::ranges::sort(places);
    return places;
}

/// Adds what the area holds. An error comes as a value of no type at all.
void read_area(const Sheet& sheet, const Area& area, const std::vector<Place>& formulas, std::vector<HeldCell>& cells)
{
    const Reference<css::sheet::XCellRangeData> data(range_of(sheet, area), UNO_QUERY_THROW);
    Place place{area.first_row, area.first_column};
    for (const auto& values : data->getDataArray()) {
        place.column = area.first_column;
        for (const auto& value : values) {
            HeldCell cell{place, {}, std::ranges::binary_search(formulas, place)};
            if (value.hasValue()) cell.value = to_value(value);
            else cell.value = error_text(sheet->getCellByPosition(place.column - 1, place.row - 1)->getError());
            if (cell.is_formula || cell.value != CellValue(Text())) cells.push_back(std::move(cell));
            ++place.column;
        }
        ++place.row;
    }
}

} // namespace

Area to_area(const css::table::CellRangeAddress& address)
{
    return {address.StartRow + 1, address.StartColumn + 1, address.EndRow + 1, address.EndColumn + 1};
}

Reference<css::table::XCellRange> range_of(const Sheet& sheet, const Area& area)
{
    return sheet->getCellRangeByPosition(area.first_column - 1, area.first_row - 1, area.last_column - 1,
                                         area.last_row - 1);
}

std::vector<Area> areas_with(const Sheet& sheet, sal_Int32 what)
{
    const Reference<css::sheet::XCellRangesQuery> query(sheet, UNO_QUERY_THROW);
    std::vector<Area> areas;
    for (const auto& address : query->queryContentCells(static_cast<sal_Int16>(what))->getRangeAddresses())
        areas.push_back(to_area(address));
    return areas;
}

SheetContent read_sheet(const Sheet& sheet)
{
    constexpr sal_Int32 anything = flags::VALUE | flags::DATETIME | flags::STRING | flags::FORMULA;
    SheetContent content;
    auto areas = areas_with(sheet, anything);
    if (!areas.empty()) {
        const auto formulas = places_in(areas_with(sheet, flags::FORMULA));
        gather(areas);
        for (const auto& area : areas) read_area(sheet, area, formulas, content.cells);
    }
    std::ranges::sort(content.cells, {}, &HeldCell::place);
    const auto is_repeated = [](const HeldCell& one, const HeldCell& next) { return one.place == next.place; };
    content.cells.erase(std::unique(content.cells.begin(), content.cells.end(), is_repeated), content.cells.end());
    content.notes = areas_with(sheet, flags::ANNOTATION);
    return content;
}

} // namespace tarvik::libreoffice
