#include "engines/libreoffice/plugin/sheet_reading.h"

#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/IllegalArgumentException.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XFormulaQuery.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include <algorithm>
#include <map>
#include <optional>

namespace tarvik::libreoffice {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
namespace flags = css::sheet::CellFlags;

namespace {

using DataRows = Sequence<Sequence<Any>>;

Area common(const Area& one, const Area& other)
{
    return {std::max(one.first_row, other.first_row), std::max(one.first_column, other.first_column),
            std::min(one.last_row, other.last_row), std::min(one.last_column, other.last_column)};
}

bool overlaps_any(const Area& area, const std::vector<Area>& others)
{
    return std::ranges::any_of(others, [&](const Area& other) { return !common(area, other).empty(); });
}

bool is_filled_text(const CellValue& value)
{
    const auto* const text = std::get_if<Text>(&value);
    return text && !text->empty();
}

/// The number formats of an area, to be put back. LibreOffice gives a cell the format of texts when it gets a text that
/// reads like a number.
class NumberFormats {
public:
    NumberFormats(const Sheet& sheet, const Area& area) { note(sheet, area); }

    void put_back() const
    {
        for (const auto& [area, range, format] : parts_) {
            const Reference<css::beans::XPropertySet> set(range, UNO_QUERY_THROW);
            if (is_mixed(range) || set->getPropertyValue(name()) != format) set->setPropertyValue(name(), format);
        }
    }

    using Range = Reference<css::table::XCellRange>;
    struct Part {
        Area area;
        Range range;
        Any format;
    };
    const std::vector<Part>& parts() const noexcept { return parts_; }

private:
    static rtl::OUString name() { return rtl::OUString::createFromAscii("NumberFormat"); }

    static bool is_mixed(const Range& range)
    {
        const Reference<css::beans::XPropertyState> state(range, UNO_QUERY_THROW);
        return state->getPropertyState(name()) == css::beans::PropertyState_AMBIGUOUS_VALUE;
    }

    // Halves until each part has one format; columns first, since it is they that have formats of their own.
    void note(const Sheet& sheet, const Area& area)
    {
        const auto range = range_of(sheet, area);
        if (area.cells() == 1 || !is_mixed(range)) {
            const Reference<css::beans::XPropertySet> set(range, UNO_QUERY_THROW);
            parts_.push_back({area, range, set->getPropertyValue(name())});
            return;
        }
        Area front = area, back = area;
        if (area.columns() > 1) {
            front.last_column = area.first_column + area.columns() / 2 - 1;
            back.first_column = front.last_column + 1;
        } else {
            front.last_row = area.first_row + area.rows() / 2 - 1;
            back.first_row = front.last_row + 1;
        }
        note(sheet, front);
        note(sheet, back);
    }

    std::vector<Part> parts_;
};

struct ToAny {
    Any operator()(double number) const { return Any(number); }
    Any operator()(const Text& text) const { return Any(to_uno(text)); }
};

class HeldWorkbook final : public HeldFile<OpenWorkbook> {
public:
    HeldWorkbook(const Model& model, const Reference<css::sheet::XSpreadsheetDocument>& document)
        : HeldFile(model), filter_(filter_of(model)), sheets_(document->getSheets(), UNO_QUERY_THROW)
    {
    }

    const std::string& filter() const override { return filter_; }

    int sheet_count() override
    {
        return translated([&] { return sheets_->getCount(); });
    }

    bool is_read_only() override
    {
        return translated([&] {
            const Reference<css::frame::XStorable> storable(model(), UNO_QUERY_THROW);
            return static_cast<bool>(storable->isReadonly());
        });
    }

    bool lift_protection(int sheet) override
    {
        return translated([&] {
            const Reference<css::util::XProtectable> protectable(sheet_at(sheet), UNO_QUERY_THROW);
            if (!protectable->isProtected()) return true;
            try {
                protectable->unprotect(rtl::OUString());
            } catch (const css::lang::IllegalArgumentException&) { // the password is not the empty one
                return false;
            }
            if (protectable->isProtected()) return false;
            lifted_.push_back(protectable);
            return true;
        });
    }

    void store(const std::filesystem::path& path, const std::string& filter) override
    {
        translated([&] {
            for (const auto& sheet : lifted_) sheet->protect(rtl::OUString());
            store_copy(model(), path, filter);
            for (const auto& sheet : lifted_) sheet->unprotect(rtl::OUString());
        });
    }

    SheetContent read(int sheet) override
    {
        return translated([&] { return read_sheet(sheet_at(sheet)); });
    }

    ShownAs shown_as(int sheet, int row, int column) override
    {
        return translated([&] {
            const auto key = property_of<sal_Int32>(cell_at(sheet, row, column), "NumberFormat");
            const Reference<css::util::XNumberFormatsSupplier> formats(model(), UNO_QUERY_THROW);
            const auto type = property_of<sal_Int16>(formats->getNumberFormats()->getByKey(key), "Type");
            if ((type & css::util::NumberFormat::DATETIME) != 0) return ShownAs::Date;
            return (type & css::util::NumberFormat::LOGICAL) != 0 ? ShownAs::Logical : ShownAs::Number;
        });
    }

    MergedArea merged_around(int sheet, const Area& area) override
    {
        return translated([&]() -> MergedArea {
            const auto range = range_of(sheet_at(sheet), area);
            const Reference<css::sheet::XSheetCellRange> sheet_range(range, UNO_QUERY_THROW);
            const auto cursor = sheet_at(sheet)->createCursorByRange(sheet_range);
            cursor->collapseToMergedArea();
            const Reference<css::sheet::XCellRangeAddressable> addressable(cursor, UNO_QUERY_THROW);
            const Reference<css::util::XMergeable> mergeable(range, UNO_QUERY_THROW);
            return {to_area(addressable->getRangeAddress()), static_cast<bool>(mergeable->getIsMerged())};
        });
    }

    void split_merged(int sheet, const Area& area) override
    {
        translated([&] {
            const Reference<css::util::XMergeable> mergeable(range_of(sheet_at(sheet), area), UNO_QUERY_THROW);
            mergeable->merge(false);
        });
    }

    std::vector<Area> numeric_parts(int sheet, const std::vector<Area>& areas) override
    {
        return translated([&] {
            std::vector<Area> numeric;
            for (const auto& area : areas) {
                const NumberFormats formats(sheet_at(sheet), area);
                for (const auto& part : formats.parts()) {
                    sal_Int32 key = 0;
                    part.format >>= key;
                    const auto kind = kind_of(key);
                    if (kind == Kind::Number) numeric.push_back(part.area);
                    if (kind == Kind::General) append_referred(sheet, part.area, numeric);
                }
            }
            return numeric;
        });
    }

    void write(int sheet, const Block& block) override
    {
        translated([&] {
            const int columns = block.area.columns();
            DataRows rows(block.area.rows());
            auto value = block.values.begin();
            for (Sequence<Any>*row = rows.getArray(), *end = row + rows.getLength(); row != end; ++row) {
                row->realloc(columns);
                std::transform(value, value + columns, row->getArray(),
                               [](const CellValue& one) { return std::visit(ToAny(), one); });
                value += columns;
            }
            std::optional<NumberFormats> formats;
            if (std::ranges::any_of(block.values, is_filled_text)) formats.emplace(sheet_at(sheet), block.area);
            const Reference<css::sheet::XCellRangeData> data(range_of(sheet_at(sheet), block.area), UNO_QUERY_THROW);
            data->setDataArray(rows);
            if (formats) formats->put_back();
        });
    }

    void write_cell(int sheet, int row, int column, const CellValue& value) override
    {
        translated([&] {
            const auto cell = cell_at(sheet, row, column);
            if (const auto* number = std::get_if<double>(&value)) return cell->setValue(*number);
            const NumberFormats formats(sheet_at(sheet), {row, column, row, column});
            const Reference<css::text::XText> text(cell, UNO_QUERY_THROW);
            text->setString(to_uno(std::get<Text>(value)));
            formats.put_back();
        });
    }

private:
    enum class Kind { Number, General, Text }; // a date's is General, too

    Kind kind_of(sal_Int32 key)
    {
        constexpr auto numbers = css::util::NumberFormat::NUMBER | css::util::NumberFormat::CURRENCY |
                                 css::util::NumberFormat::SCIENTIFIC | css::util::NumberFormat::FRACTION |
                                 css::util::NumberFormat::PERCENT;
        const Reference<css::util::XNumberFormatsSupplier> supplier(model(), UNO_QUERY_THROW);
        const auto formats = supplier->getNumberFormats();
        const auto format = formats->getByKey(key);
        const auto type = property_of<sal_Int16>(format, "Type");
        if ((type & css::util::NumberFormat::TEXT) != 0) return Kind::Text;
        const Reference<css::util::XNumberFormatTypes> types(formats, UNO_QUERY_THROW);
        const bool is_standard = key == types->getStandardIndex(property_of<css::lang::Locale>(format, "Locale"));
        return (type & numbers) != 0 && !is_standard ? Kind::Number : Kind::General;
    }

    // LibreOffice counts formulas among what they refer to, so that those are asked for one by one.
    void append_referred(int sheet, const Area& area, std::vector<Area>& referred)
    {
        note_references();
        for (const auto& one : referred_[sheet]) {
            const auto both = common(area, one);
            if (both.empty()) continue;
            if (!overlaps_any(both, formulas_[sheet])) {
                referred.push_back(both);
                continue;
            }
            for (int row = both.first_row; row <= both.last_row; ++row) {
                for (int column = both.first_column; column <= both.last_column; ++column) {
                    const Area cell{row, column, row, column};
                    if (!overlaps_any(cell, formulas_[sheet]) || has_dependents(sheet, cell)) referred.push_back(cell);
                }
            }
        }
    }

    bool has_dependents(int sheet, const Area& cell)
    {
        const Reference<css::sheet::XFormulaQuery> query(range_of(sheet_at(sheet), cell), UNO_QUERY_THROW);
        const auto found = query->queryDependents(false)->getRangeAddresses();
        return found.getLength() != 1 || to_area(found[0]) != cell;
    }

    void note_references()
    {
        if (!formulas_.empty()) return;
        for (int sheet = 1; sheet <= sheets_->getCount(); ++sheet) {
            formulas_[sheet] = areas_with(sheet_at(sheet), flags::FORMULA);
            const Reference<css::sheet::XCellRangesQuery> cells(sheet_at(sheet), UNO_QUERY_THROW);
            const Reference<css::sheet::XFormulaQuery> query(
                cells->queryContentCells(static_cast<sal_Int16>(flags::FORMULA)), UNO_QUERY_THROW);
            for (const auto& address : query->queryPrecedents(false)->getRangeAddresses())
                referred_[address.Sheet + 1].push_back(to_area(address));
        }
    }

    Sheet sheet_at(int index)
    {
        auto& sheet = open_sheets_[index];
        if (!sheet.is()) sheet.set(sheets_->getByIndex(index - 1), UNO_QUERY_THROW);
        return sheet;
    }

    Reference<css::table::XCell> cell_at(int sheet, int row, int column)
    {
        return sheet_at(sheet)->getCellByPosition(column - 1, row - 1);
    }

    std::string filter_;
    Reference<css::container::XIndexAccess> sheets_;
    std::vector<Reference<css::util::XProtectable>> lifted_; ///< sheets whose protection is put back for storing
    std::map<int, Sheet> open_sheets_;
    std::map<int, std::vector<Area>> formulas_, referred_; ///< by sheets, once they are asked for
};

} // namespace

std::unique_ptr<OpenWorkbook> hold_workbook(const Model& model)
{
    const Reference<css::sheet::XSpreadsheetDocument> document(model, UNO_QUERY);
    if (!document.is()) return nullptr;
    return std::make_unique<HeldWorkbook>(model, document);
}

} // namespace tarvik::libreoffice
