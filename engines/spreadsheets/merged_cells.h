#pragma once

#include "engines/spreadsheets/range_set.h"

#include <map>

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// The merged ranges of a worksheet.
class MergedCells {
public:
    explicit MergedCells(pugi::xml_node worksheet);

    /// The merged range that the cell lies in, or nullptr.
    const Range* find(Place place) const noexcept;
    /// The range is merged no longer.
    void split(const Range& range);

private:
    pugi::xml_node worksheet_;
    std::map<Place, pugi::xml_node> nodes_; // by the first cells of what is merged
    RangeSet ranges_;                       // what has been split among them
};

} // namespace tarvik::ooxml
