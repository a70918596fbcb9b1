#pragma once

#include "engines/packages/package_editor.h"
#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/calculation/formula.h"
#include "engines/spreadsheets/cell_values.h"
#include "engines/spreadsheets/merged_cells.h"
#include "engines/spreadsheets/range_set.h"
#include "engines/spreadsheets/sheet_cells.h"

#include <set>
#include <string_view>

namespace tarvik::ooxml {

class WorkbookModel;

/// Calls `visitor` with the root of each part of that kind that a sheet leads to, each once. Throws Damage.
template <typename Visitor>
void visit_related(const Package& package, std::string_view sheet, std::string_view kind, const char* root,
                   Visitor&& visitor)
{
    std::set<std::string> met;
    const Relationships relationships(package, sheet);
    for (const auto& one : relationships.all())
        if (one.kind() == kind && package.has(one.target) && met.insert(part_key(one.target)).second)
            visitor(XmlPart(one.target, package.part(one.target), root).root());
}

/// A worksheet of the workbook: the cell operations of Worksheet on its part. What is wrong is thrown as Damage, the
/// sheet then being as it was; what nobody could edit is refused when it is made.
class SheetPart {
public:
    /// `number` counts from 1.
    SheetPart(int number, const Package& package, const std::string& name, CellValues& values, WorkbookModel& workbook);
    SheetPart(const SheetPart&) = delete;
    SheetPart& operator=(const SheetPart&) = delete;

    Text text(Place place) const;
    bool is_empty(Place place) const;
    bool is_date(Place place) const;
    /// The value as write() takes it to keep what it is.
    CellValue held(Place place) const;
    /// Whether no cell in the range holds anything, as of the results that are stored.
    bool is_blank(const Range& range) const;
    /// Whether anything was changed.
    bool write(Place place, const CellValue& value);
    /// Gives how many cells it emptied.
    int clear(const Range& range);

    /// The part with an element for each of its cells.
    const XmlPart& part() const;
    /// The part as it can be printed.
    const XmlPart& settle();

    // For formulas and their results, of which nothing is brought up to date here.
    const SheetCells& cells() const noexcept { return cells_; }
    calculation::Value value(Place place) const;
    /// Of all cells of the range, row by row.
    std::vector<calculation::Value> values(const Range& range) const;
    void visit_values(const Range& area, const calculation::CellSource::Visitor& visitor) const;
    /// Hidden by hand or by a filter; and by a filter alone.
    bool is_row_hidden(int row) const;
    bool is_row_filtered(int row) const;
    void set_result(Place place, const calculation::Value& result);
    void drop_results(const Range& range);

private:
    pugi::xml_node current(Place place) const;
    bool write_to_merged(const Range& range, Place place, const CellValue& value);
    bool write_cell(Place place, const CellValue& value);
    bool is_header(Place place) const;
    void refuse_protected(Place place) const;
    std::vector<Place> filled_cells(const Range& range);
    const Range* filling(Place place) const;
    std::vector<Range> fillings(const std::vector<Place>& cells) const;
    void refuse_parts(const Range& area, const std::vector<Place>& cells) const;
    void release(const Range& area, const std::vector<Place>& cells);
    bool gives_nothing(Place place) const;
    void erase(const Range& area, const std::vector<Place>& places);

    int number_;
    XmlPart part_;
    SheetCells cells_;
    MergedCells merged_;
    CellValues& values_;
    RangeSet pivots_;         // what pivot tables fill; a spreadsheet application fills it anew from their own records
    WorkbookModel& workbook_; // whose formulas, in other sheets too, depend on its cells
};

} // namespace tarvik::ooxml
