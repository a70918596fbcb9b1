#include "engines/spreadsheets/merged_cells.h"

#include "engines/packages/xml_part.h"

namespace tarvik::ooxml {

MergedCells::MergedCells(pugi::xml_node worksheet) : worksheet_(worksheet)
{
    std::vector<Range> ranges;
    for (const auto node : child_named(worksheet, "mergeCells").children()) {
        const auto range = parse_range(attribute_text(node, "ref"));
        if (!range) continue;
        ranges.push_back(*range);
        nodes_.emplace(range->first, node);
    }
    ranges_ = RangeSet(ranges);
}

const Range* MergedCells::find(Place place) const noexcept
{
    const auto* range = ranges_.find(place);
    return range && nodes_.contains(range->first) ? range : nullptr;
}

void MergedCells::split(const Range& range)
{
    auto all = child_named(worksheet_, "mergeCells");
    remove_element(all, nodes_.at(range.first));
    nodes_.erase(range.first);
    if (nodes_.empty()) remove_element(worksheet_, all);
    else if (auto count = all.attribute("count")) count.set_value(static_cast<unsigned long long>(nodes_.size()));
}

} // namespace tarvik::ooxml
