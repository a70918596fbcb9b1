#include "office/spreadsheets/merged_ranges.h"

#include "office/packages/xml_part.h"

namespace tarvik::ooxml {

MergedRanges::MergedRanges(pugi::xml_node worksheet)
{
    for (const auto node : child_named(worksheet, "mergeCells").children()) {
        const auto range = parse_range(attribute_text(node, "ref"));
        if (range) ranges_.push_back({*range, 0});
    }
    std::stable_sort(ranges_.begin(), ranges_.end(),
                     [](const auto& a, const auto& b) { return a.range.first.row < b.range.first.row; });
    int last_row = 0;
    for (auto& merged : ranges_) {
        last_row = std::max(last_row, merged.range.last.row);
        merged.last_row_so_far = last_row;
    }
}

Place MergedRanges::first_cell(Place place) const noexcept
{
    auto behind = std::upper_bound(ranges_.begin(), ranges_.end(), place.row,
                                   [](int row, const auto& merged) { return row < merged.range.first.row; });
    while (behind != ranges_.begin()) {
        --behind;
        if (behind->last_row_so_far < place.row) break;
        if (behind->range.contains(place)) return behind->range.first;
    }
    return place;
}

} // namespace tarvik::ooxml
