#pragma once

#include "engines/spreadsheets/calculation/places.h"

#include <array>
#include <span>
#include <vector>

namespace tarvik::ooxml {

/// Ranges of a sheet, found by a cell that lies in them. However many there are and however they lie, disjoint ranges
/// are found in the time of the root of their number at the worst.
class RangeSet {
public:
    RangeSet() = default;
    explicit RangeSet(const std::vector<Range>& ranges)
    {
        for (const auto& range : ranges) entries_.push_back({range, range, entries_.size()});
        build(entries_);
    }

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
        return any_of(area, met, std::span(entries_));
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

    static std::array<int, 4> sides_of(const Range& range) noexcept
    {
        return {range.first.row, range.first.column, range.last.row, range.last.column};
    }
    // A stretch is halved by the side that lies farthest apart in its ranges.
    static void build(std::span<Entry> stretch)
    {
        if (stretch.empty()) return;
        auto least = sides_of(stretch.front().range), most = least;
        for (const auto& entry : stretch) {
            const auto sides = sides_of(entry.range);
            for (std::size_t i = 0; i < sides.size(); ++i) {
                least[i] = std::min(least[i], sides[i]);
                most[i] = std::max(most[i], sides[i]);
            }
        }
        std::size_t widest = 0;
        for (const std::size_t side : {2, 1, 3})
            if (most[side] - least[side] > most[widest] - least[widest]) widest = side;
        const auto half = stretch.size() / 2;
        std::ranges::nth_element(stretch, stretch.begin() + static_cast<std::ptrdiff_t>(half), {},
                                 [widest](const Entry& entry) { return sides_of(entry.range)[widest]; });
        stretch[half].bounds = {{least[0], least[1]}, {most[2], most[3]}};
        build(stretch.first(half));
        build(stretch.subspan(half + 1));
    }

    template <typename Met>
    static bool any_of(const Range& area, Met& met, std::span<const Entry> stretch)
    {
        const auto half = stretch.size() / 2;
        if (stretch.empty() || !stretch[half].bounds.overlaps(area)) return false;
        return (stretch[half].range.overlaps(area) && met(stretch[half].range)) ||
               any_of(area, met, stretch.first(half)) || any_of(area, met, stretch.subspan(half + 1));
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
