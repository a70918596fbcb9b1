#pragma once

#include "engines/spreadsheets/range_set.h"
#include "engines/spreadsheets/sheet_cells.h"

#include <map>
#include <string>
#include <vector>

namespace tarvik::ooxml {

/// A formula as a cell's element holds it.
struct FormulaElement {
    enum Kind { Usual, Shared, Array, DataTable };

    explicit FormulaElement(pugi::xml_node cell);

    pugi::xml_node node;
    Kind kind = Usual;
    std::string text;  ///< empty for a cell that shares the formula that another one holds
    std::string group; ///< of those that share one; a later group may use its number again
    bool has_range = false;
    std::optional<Range> filled; ///< by an array formula or a data table

    bool is_master() const noexcept { return kind == Shared && !text.empty() && has_range; }
};

/// The formula cells of a sheet as the part holds them: alone, sharing one formula, or filled by an array formula or a
/// data table.
class FormulaGroups {
public:
    explicit FormulaGroups(const SheetCells& cells);

    /// Whether the cell is filled by an array formula or a data table; it is a formula cell even with nothing in it.
    bool fills(Place place) const { return filled_.contains(place); }
    /// The ranges that are filled so and hold one of the cells.
    std::vector<Range> fillings(const std::vector<Place>& cells) const;
    /// Damage when overwriting the cells would leave a part of an array formula or a data table outside of the area,
    /// which is all that may be overwritten.
    void refuse_parts(const Range& area, const std::vector<Place>& cells) const;
    /// To be called before these cells, in the order of the part, are overwritten. Other cells that share a formula of
    /// one of them state their own from now on. Damage as above, or where that would take too much, with nothing
    /// changed.
    void release(const Range& area, const std::vector<Place>& cells);

private:
    struct Shared {
        std::string formula;
        std::vector<Place> others;
    };

    bool still_shares(Place place) const;

    const SheetCells& cells_;
    std::vector<Range> filled_ranges_; // of more than one cell
    RangeSet filled_;                  // the same
    std::map<Place, Shared> shared_;   // by the cell that states the formula
};

} // namespace tarvik::ooxml
