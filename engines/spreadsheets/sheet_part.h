#pragma once

#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/cell_values.h"
#include "engines/spreadsheets/formula_groups.h"
#include "engines/spreadsheets/protected_areas.h"
#include "engines/spreadsheets/sheet_cells.h"

namespace tarvik::ooxml {

/// A worksheet of the workbook: the cell operations of Worksheet on its part. What is wrong is told as Damage, the
/// sheet then being as it was; what nobody could edit is refused when it is made.
class SheetPart {
public:
    SheetPart(std::string name, const std::string& contents, CellValues& values, ProtectedAreas areas);
    SheetPart(const SheetPart&) = delete;
    SheetPart& operator=(const SheetPart&) = delete;

    Text text(Place place) const;
    std::optional<double> number(Place place) const;
    bool is_empty(Place place) const;
    /// Both tell whether anything was changed.
    bool write(Place place, TextView text);
    bool write(Place place, double number);
    int clear(const Range& range);
    /// Takes the cached results away from all formula cells.
    void drop_results();

    /// The part with an element for each of its cells.
    const XmlPart& part() const;
    /// The part as it can be printed.
    const XmlPart& settle();

private:
    Place first_of_merged(Place place) const noexcept;
    pugi::xml_node cell_to_overwrite(Place place);
    void refuse_protected(Place place) const;

    XmlPart part_;
    SheetCells cells_;
    FormulaGroups formulas_;
    RangeSet merged_;
    CellValues& values_;
    ProtectedAreas areas_;
};

/// Whether there may be a formula cell in a worksheet part: false is certain.
bool may_have_formulas(std::string_view contents) noexcept;

} // namespace tarvik::ooxml
