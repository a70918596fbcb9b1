#pragma once

#include "engines/spreadsheets/calculation/places.h"

#include <cstddef>
#include <vector>

namespace tarvik::ooxml {

/// Ranges of a sheet, found by a cell that lies in them. However many there are and however they lie, disjoint ranges
/// are found in the time of the root of their number at the worst.
class RangeSet {
public:
    RangeSet() = default;
    explicit RangeSet(const std::vector<Range>& ranges);

    /// A range that holds the cell, or nullptr.
    const Range* find(Place place) const
    {
        const Range* held = nullptr;
        any_of({place, place}, [&held](const Range& range) { return held = &range; });
        return held;
    }
    bool contains(Place place) const { return find(place) != nullptr; }
    /// Calls `met` with each range that overlaps the area, until one is met, and gives whether one was.
    template <typename Met>
    bool any_of(const Range& area, Met&& met) const
    {
        return any_of(area, met, 0, entries_.size());
    }

    /// Ranges that were taken out of a set by take(); of a stretch of the tree all of them may be.
    struct Taken {
        std::vector<bool> one, all;
    };
    /// Calls `found` with the index, in the vector given, of each range that overlaps the area and was not taken
    /// before. However often a set is asked, a range costs its time once.
    template <typename Found>
    void take(const Range& area, Taken& taken, Found&& found) const
    {
        taken.one.resize(entries_.size());
        taken.all.resize(entries_.size());
        take(area, taken, 0, entries_.size(), found);
    }

private:
    // A tree: the middle entry of a stretch is its root, what lies on either side of it its branches.
    struct Entry {
        Range range;
        Range bounds; // of the stretch
        std::size_t index = 0;
    };

    void build(std::size_t first, std::size_t behind);

    template <typename Met>
    bool any_of(const Range& area, Met& met, std::size_t first, std::size_t behind) const
    {
        if (first == behind) return false;
        const auto middle = first + (behind - first) / 2;
        const auto& root = entries_[middle];
        if (!root.bounds.overlaps(area)) return false;
        return (root.range.overlaps(area) && met(root.range)) || any_of(area, met, first, middle) ||
               any_of(area, met, middle + 1, behind);
    }
    // Whether all of the stretch are taken.
    template <typename Found>
    bool take(const Range& area, Taken& taken, std::size_t first, std::size_t behind, Found& found) const
    {
        if (first == behind) return true;
        const auto middle = first + (behind - first) / 2;
        const auto& root = entries_[middle];
        if (taken.all[middle]) return true;
        if (!root.bounds.overlaps(area)) return false;
        if (!taken.one[middle] && root.range.overlaps(area)) {
            taken.one[middle] = true;
            found(root.index);
        }
        const bool are_left_taken = take(area, taken, first, middle, found);
        const bool are_right_taken = take(area, taken, middle + 1, behind, found);
        taken.all[middle] = taken.one[middle] && are_left_taken && are_right_taken;
        return taken.all[middle];
    }

    std::vector<Entry> entries_;
};

} // namespace tarvik::ooxml
