#include "engines/spreadsheets/range_set.h"

namespace tarvik::ooxml {

namespace {

int side_of(const Range& range, int side) noexcept
{
    switch (side) {
    case 0: return range.first.row;
    case 1: return range.last.row;
    case 2: return range.first.column;
    default: return range.last.column;
    }
}

} // namespace

RangeSet::RangeSet(const std::vector<Range>& ranges)
{
    entries_.reserve(ranges.size());
    for (const auto& range : ranges) entries_.push_back({range, range, entries_.size()});
    if (!entries_.empty()) build(0, entries_.size());
}

// A stretch is halved by the side that lies farthest apart in its ranges.
void RangeSet::build(std::size_t first, std::size_t behind)
{
    const auto middle = first + (behind - first) / 2;
    const auto at = [this](std::size_t index) { return entries_.begin() + static_cast<std::ptrdiff_t>(index); };
    int widest = -1, side = 0;
    for (int one = 0; one < 4; ++one) {
        const auto is_less = [one](const Entry& a, const Entry& b) {
            return side_of(a.range, one) < side_of(b.range, one);
        };
        const auto [least, most] = std::minmax_element(at(first), at(behind), is_less);
        const int spread = side_of(most->range, one) - side_of(least->range, one);
        if (spread <= widest) continue;
        widest = spread;
        side = one;
    }
    std::nth_element(at(first), at(middle), at(behind), [side](const Entry& a, const Entry& b) {
        return side_of(a.range, side) < side_of(b.range, side);
    });
    auto bounds = entries_[first].range;
    std::for_each(at(first), at(behind), [&bounds](const Entry& entry) {
        bounds.include(entry.range.first);
        bounds.include(entry.range.last);
    });
    entries_[middle].bounds = bounds;
    if (first < middle) build(first, middle);
    if (middle + 1 < behind) build(middle + 1, behind);
}

} // namespace tarvik::ooxml
