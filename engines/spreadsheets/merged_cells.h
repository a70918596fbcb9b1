#pragma once

#include "engines/automation.h"
#include "engines/spreadsheets/range_set.h"

#include <map>

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// The merged ranges of a worksheet, and for which cell of each the text was meant that its first cell has been given.
class MergedCells {
public:
    /// What a range's first cell was given.
    struct Given {
        Place meant_for;
        CellValue before; ///< what the first cell held
    };

    explicit MergedCells(pugi::xml_node worksheet);

    /// The merged range that the cell lies in, or nullptr.
    const Range* find(Place place) const noexcept;
    /// Nothing as long as the range has been given nothing.
    const Given* given(const Range& range) const;
    void give(const Range& range, Given given) { given_.insert_or_assign(range.first, std::move(given)); }
    void forget(Place place) { given_.erase(place); }
    /// The range is merged no longer.
    void split(const Range& range);

private:
    pugi::xml_node worksheet_;
    std::map<Place, pugi::xml_node> nodes_; // by the first cells of what is merged
    RangeSet ranges_;                       // what has been split among them
    std::map<Place, Given> given_;          // the same
};

} // namespace tarvik::ooxml
