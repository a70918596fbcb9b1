#include "engines/libreoffice/plugin/held_file.h"

#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include <algorithm>
#include <map>

namespace tarvik::libreoffice {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
namespace flags = css::sheet::CellFlags;

namespace {

using DataRows = Sequence<Sequence<Any>>;
using Sheet = Reference<css::sheet::XSpreadsheet>;
using ooxml::Place, ooxml::Range;

Reference<css::table::XCellRange> range_of(const Sheet& sheet, const Range& area)
{
    return sheet->getCellRangeByPosition(area.first.column - 1, area.first.row - 1, area.last.column - 1,
                                         area.last.row - 1);
}

/// The number formats of an area, to be put back. LibreOffice gives a cell the format of texts when it gets a text that
/// reads like a number.
class NumberFormats {
public:
    NumberFormats(const Sheet& sheet, const Range& area) { note(sheet, area); }

    void put_back() const
    {
        for (const auto& [range, format] : parts_) {
            const Reference<css::beans::XPropertySet> set(range, UNO_QUERY_THROW);
            if (is_mixed(range) || set->getPropertyValue(name()) != format) set->setPropertyValue(name(), format);
        }
    }

private:
    using Part = Reference<css::table::XCellRange>;

    static rtl::OUString name() { return rtl::OUString::createFromAscii("NumberFormat"); }

    static bool is_mixed(const Part& range)
    {
        const Reference<css::beans::XPropertyState> state(range, UNO_QUERY_THROW);
        return state->getPropertyState(name()) == css::beans::PropertyState_AMBIGUOUS_VALUE;
    }

    // Halves until each part has one format; columns first, since it is they that have formats of their own.
    void note(const Sheet& sheet, const Range& area)
    {
        const auto range = range_of(sheet, area);
        if (area.first == area.last || !is_mixed(range)) {
            const Reference<css::beans::XPropertySet> set(range, UNO_QUERY_THROW);
            parts_.emplace_back(range, set->getPropertyValue(name()));
            return;
        }
        Range front = area, back = area;
        const bool is_wide = area.last.column > area.first.column;
        const auto side = is_wide ? &Place::column : &Place::row;
        front.last.*side = (area.first.*side + area.last.*side) / 2;
        back.first.*side = front.last.*side + 1;
        note(sheet, front);
        note(sheet, back);
    }

    std::vector<std::pair<Part, Any>> parts_;
};

/// A rectangle of values, row by row.
struct Block {
    Range area;
    std::vector<CellValue> values;
};

/// The cells in as few rectangles as runs along a row and equal runs of rows that follow each other make.
std::vector<Block> blocks_of(const OpenWorkbook::Cells& cells)
{
    std::vector<Block> blocks;
    std::map<std::pair<int, int>, std::size_t> last_with_columns; // the lowest rectangle of these columns
    for (auto start = cells.begin(), end = start; start != cells.end(); start = end) {
        const auto [row, column] = start->first;
        std::vector<CellValue> values;
        for (; end != cells.end() && end->first == Place{row, column + static_cast<int>(values.size())}; ++end)
            values.push_back(end->second);
        const int last_column = column + static_cast<int>(values.size()) - 1;
        auto& index = last_with_columns.try_emplace({column, last_column}, blocks.size()).first->second;
        if (index == blocks.size() || blocks[index].area.last.row != row - 1) {
            index = blocks.size();
            blocks.push_back({{{row, column}, {row, last_column}}, std::move(values)});
            continue;
        }
        blocks[index].area.last.row = row;
        blocks[index].values.insert(blocks[index].values.end(), values.begin(), values.end());
    }
    return blocks;
}

class HeldWorkbook final : public HeldFile<OpenWorkbook> {
public:
    HeldWorkbook(const Model& model, const Reference<css::sheet::XSpreadsheetDocument>& document)
        : HeldFile(model), sheets_(document->getSheets(), UNO_QUERY_THROW)
    {
    }

    Access take(int number) override
    {
        if (as<css::frame::XStorable>()->isReadonly()) return Access::FileRefused;
        const Reference<css::util::XProtectable> protectable(sheet_at(number), UNO_QUERY_THROW);
        if (!protectable->isProtected()) return Access::Granted;
        try {
            protectable->unprotect(rtl::OUString());
        } catch (const css::lang::IllegalArgumentException&) { // the password is not the empty one
            return Access::SheetRefused;
        }
        if (protectable->isProtected()) return Access::SheetRefused;
        lifted_.push_back(protectable);
        return Access::Granted;
    }

    void store(const std::filesystem::path& path, const std::string& filter) override
    {
        for (const auto& sheet : lifted_) sheet->protect(rtl::OUString());
        HeldFile::store(path, filter);
        for (const auto& sheet : lifted_) sheet->unprotect(rtl::OUString());
    }

    std::optional<Place> write(int number, const std::vector<Range>& split, const Cells& cells) override
    {
        const Sheet sheet = sheet_at(number);
        for (const auto& area : split) {
            const Reference<css::util::XMergeable> mergeable(range_of(sheet, area), UNO_QUERY_THROW);
            mergeable->merge(false);
        }
        // A note is lost when its cell is written in a block.
        const Reference<css::sheet::XCellRangesQuery> query(sheet, UNO_QUERY_THROW);
        const auto notes = query->queryContentCells(flags::ANNOTATION)->getRangeAddresses();
        Cells together;
        for (const auto& [place, value] : cells) {
            const bool has_note = std::any_of(notes.begin(), notes.end(), [&place = place](const auto& area) {
                const Range noted{{area.StartRow + 1, area.StartColumn + 1}, {area.EndRow + 1, area.EndColumn + 1}};
                return noted.contains(place);
            });
            if (!has_note) together.emplace_back(place, value);
            else if (!write_cell(sheet, place, value)) return place;
        }
        for (const auto& block : blocks_of(together))
            if (!write_block(sheet, block)) return block.area.first;
        return std::nullopt;
    }

private:
    static bool write_block(const Sheet& sheet, const Block& block)
    {
        const int columns = block.area.last.column - block.area.first.column + 1;
        DataRows rows(block.area.last.row - block.area.first.row + 1);
        auto value = block.values.begin();
        for (Sequence<Any>*row = rows.getArray(), *end = row + rows.getLength(); row != end; ++row) {
            row->realloc(columns);
            for (auto *cell = row->getArray(), *behind = cell + columns; cell != behind; ++cell, ++value) {
                const auto* const text = std::get_if<Text>(&*value);
                *cell = text ? Any(to_uno(*text)) : Any(std::get<double>(*value));
            }
        }
        const auto is_filled_text = [](const CellValue& one) {
            const auto* const text = std::get_if<Text>(&one);
            return text && !text->empty();
        };
        std::optional<NumberFormats> formats;
        if (std::ranges::any_of(block.values, is_filled_text)) formats.emplace(sheet, block.area);
        const Reference<css::sheet::XCellRangeData> data(range_of(sheet, block.area), UNO_QUERY_THROW);
        try {
            data->setDataArray(rows);
        } catch (const css::lang::DisposedException&) {
            throw;
        } catch (const css::uno::RuntimeException&) {
            return false;
        }
        if (formats) formats->put_back();
        return true;
    }

    // False where LibreOffice leaves an array formula as it is.
    static bool write_cell(const Sheet& sheet, Place place, const CellValue& value)
    {
        const auto cell = sheet->getCellByPosition(place.column - 1, place.row - 1);
        if (const auto* number = std::get_if<double>(&value)) {
            cell->setValue(*number);
        } else {
            const NumberFormats formats(sheet, {place, place});
            const Reference<css::text::XText> text(cell, UNO_QUERY_THROW);
            text->setString(to_uno(std::get<Text>(value)));
            formats.put_back();
        }
        return cell->getType() != css::table::CellContentType_FORMULA;
    }

    Sheet sheet_at(int number) const { return Sheet(sheets_->getByIndex(number - 1), UNO_QUERY_THROW); }

    Reference<css::container::XIndexAccess> sheets_;
    std::vector<Reference<css::util::XProtectable>> lifted_; ///< sheets whose protection is put back for storing
};

} // namespace

std::unique_ptr<OpenWorkbook> hold_workbook(const Model& model)
{
    const Reference<css::sheet::XSpreadsheetDocument> document(model, UNO_QUERY);
    // What LibreOffice makes nothing of is a text to it.
    if (!document.is() || value_named<rtl::OUString>(model->getArgs(), "FilterName").startsWith("Text")) return nullptr;
    return std::make_unique<HeldWorkbook>(model, document);
}

} // namespace tarvik::libreoffice
