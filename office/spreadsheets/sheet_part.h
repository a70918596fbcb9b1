#pragma once

#include "office/packages/xml_part.h"
#include "office/spreadsheets/cell_values.h"
#include "office/spreadsheets/formula_groups.h"
#include "office/spreadsheets/merged_ranges.h"
#include "office/spreadsheets/sheet_cells.h"

#include <optional>

namespace tarvik::ooxml {

/// A worksheet of the workbook: the cell operations of Worksheet on its part. What is wrong is told as Damage, the
/// sheet then being as it was.
class SheetPart {
public:
    /// The texts in `headers` must stay what they are.
    SheetPart(std::string name, const std::string& contents, CellValues& values, std::vector<Range> headers);
    SheetPart(const SheetPart&) = delete;
    SheetPart& operator=(const SheetPart&) = delete;

    Text text(Place place) const;
    std::optional<double> number(Place place) const;
    bool is_empty(Place place) const;
    // Both tell whether anything was changed.
    bool write(Place place, TextView text);
    bool write(Place place, double number);
    int clear(const Range& range);
    /// Takes the cached results away from all formula cells.
    void drop_results();

    const XmlPart& part() const noexcept { return part_; }

private:
    FormulaGroups& formulas() const;
    pugi::xml_node cell_to_overwrite(Place place);
    bool is_header(Place place) const noexcept;
    void refuse_header(Place place) const;

    XmlPart part_;
    SheetCells cells_;
    MergedRanges merged_;
    CellValues& values_;
    std::vector<Range> headers_;
    mutable std::optional<FormulaGroups> formulas_; ///< looked through when first needed
};

/// Whether there may be a formula cell in a worksheet part: false is certain.
bool may_have_formulas(std::string_view contents) noexcept;

} // namespace tarvik::ooxml
