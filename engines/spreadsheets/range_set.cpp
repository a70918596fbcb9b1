#include "engines/spreadsheets/range_set.h"

namespace tarvik::ooxml {

RangeSet::RangeSet(const std::vector<Range>& ranges)
{
    entries_.reserve(ranges.size());
    for (const auto& range : ranges) entries_.push_back({range, range});
    if (!entries_.empty()) build(0, entries_.size(), true);
}

const Range& RangeSet::build(std::size_t first, std::size_t behind, bool by_rows)
{
    const auto middle = first + (behind - first) / 2;
    const auto at = [this](std::size_t index) { return entries_.begin() + static_cast<std::ptrdiff_t>(index); };
    std::nth_element(at(first), at(middle), at(behind), [by_rows](const Entry& a, const Entry& b) {
        return by_rows ? a.range.first.row < b.range.first.row : a.range.first.column < b.range.first.column;
    });
    auto& root = entries_[middle];
    root.bounds = root.range;
    const auto include = [&root](const Range& bounds) {
        root.bounds.include(bounds.first);
        root.bounds.include(bounds.last);
    };
    if (first < middle) include(build(first, middle, !by_rows));
    if (middle + 1 < behind) include(build(middle + 1, behind, !by_rows));
    return root.bounds;
}

const Range* RangeSet::find(Place place, std::size_t first, std::size_t behind) const noexcept
{
    if (first == behind) return nullptr;
    const auto middle = first + (behind - first) / 2;
    const auto& root = entries_[middle];
    if (!root.bounds.contains(place)) return nullptr;
    if (root.range.contains(place)) return &root.range;
    const auto* found = find(place, first, middle);
    return found ? found : find(place, middle + 1, behind);
}

} // namespace tarvik::ooxml
