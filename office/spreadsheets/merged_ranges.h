#pragma once

#include "office/spreadsheets/places.h"

#include <vector>

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// The merged ranges of a sheet.
class MergedRanges {
public:
    explicit MergedRanges(pugi::xml_node worksheet);

    /// The first cell of the range that the cell lies in; a cell outside of every range is its own first cell.
    Place first_cell(Place place) const noexcept;

private:
    struct Merged {
        Range range;
        int last_row_so_far; ///< the greatest last row of this and all ranges before it
    };
    std::vector<Merged> ranges_; ///< by first row
};

} // namespace tarvik::ooxml
