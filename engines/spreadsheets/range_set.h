#pragma once

#include "engines/spreadsheets/calculation/places.h"

#include <vector>

namespace tarvik::ooxml {

/// Ranges of a sheet, found by a cell that lies in them. However many there are and however they lie, disjoint ranges
/// are found in the time of the root of their number at the worst.
class RangeSet {
public:
    RangeSet() = default;
    explicit RangeSet(const std::vector<Range>& ranges);

    /// A range that holds the cell, or nullptr.
    const Range* find(Place place) const noexcept { return find(place, 0, entries_.size()); }
    bool contains(Place place) const noexcept { return find(place) != nullptr; }

private:
    // A tree: the middle entry of a stretch is its root, what lies on either side of it its branches.
    struct Entry {
        Range range;
        Range bounds; // of the stretch
    };

    const Range& build(std::size_t first, std::size_t behind, bool by_rows);
    const Range* find(Place place, std::size_t first, std::size_t behind) const noexcept;

    std::vector<Entry> entries_;
};

} // namespace tarvik::ooxml
