#pragma once

#include "office/spreadsheets/places.h"
#include "office/spreadsheets/sheet_cells.h"

#include <map>
#include <string>
#include <vector>

namespace tarvik::ooxml {

/// The formula cells of a sheet as the part holds them: alone, sharing one formula, or filled by an array formula or a
/// data table.
class FormulaGroups {
public:
    explicit FormulaGroups(const SheetCells& cells);

    /// Whether the cell is filled by an array formula or a data table; it is a formula cell even with nothing in it.
    bool fills(Place place) const noexcept;
    /// To be called before cells of the range are overwritten. Cells outside of it that share a formula told inside get
    /// it told themselves. Damage, with nothing changed, when only a part of an array formula or a data table would be
    /// lost.
    void release(const Range& overwritten);
    /// Takes the cached results away from all formula cells; whether there were any.
    bool drop_results();

private:
    struct Shared {
        std::string formula;
        std::vector<Place> others;
    };

    void add_shared(Place place, pugi::xml_node formula, std::map<std::string, Place>& masters);
    void tell_formula(Place place, Place master, const Shared& shared);

    const SheetCells& cells_;
    std::vector<Place> formula_cells_;
    std::vector<Range> filled_;      ///< of more than one cell
    std::map<Place, Shared> shared_; ///< by the cell that tells the formula
};

} // namespace tarvik::ooxml
