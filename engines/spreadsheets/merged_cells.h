#pragma once

#include "engines/automation.h"
#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/range_set.h"

#include <map>
#include <utility>
#include <vector>

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// The merged ranges of a worksheet, and what a text does that is written into one: the range shows one text, the one
/// for whichever of its cells; a second one splits it, as a clerk would, and each goes to its own cell.
class MergedCells {
public:
    struct Outcome {
        bool splits = false;
        std::vector<std::pair<Place, CellValue>> writes; ///< in this order
    };

    explicit MergedCells(pugi::xml_node worksheet) : worksheet_(worksheet)
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

    /// The merged range that the cell lies in, or nullptr.
    const Range* find(Place place) const
    {
        const auto* range = ranges_.find(place);
        return range && nodes_.contains(range->first) ? range : nullptr;
    }
    /// `held` is what the range's first cell holds.
    Outcome write(const Range& range, Place place, const CellValue& value, const CellValue& held)
    {
        const Place first = range.first;
        const auto* text = std::get_if<Text>(&value);
        const auto known = given_.find(first);
        const bool is_given = known != given_.end();
        const auto owner = is_given ? known->second.meant_for : first;
        if (text && text->empty()) {
            if (place != owner && place != first) return {};
            forget(first);
            return {false, {{first, value}}};
        }
        if (!is_given || owner == place || held == value) {
            const auto before = is_given ? known->second.before : place == first ? CellValue() : held;
            given_.insert_or_assign(first, Given{place, before});
            return {false, {{first, value}}};
        }
        Outcome outcome{true, {}};
        if (owner != first) outcome.writes = {{first, known->second.before}, {owner, held}};
        outcome.writes.emplace_back(place, value);
        forget(first);
        split(first);
        return outcome;
    }
    /// The texts given for the range that begins there.
    void forget(Place first) { given_.erase(first); }

private:
    void split(Place first)
    {
        auto all = child_named(worksheet_, "mergeCells");
        remove_element(all, nodes_.at(first));
        nodes_.erase(first);
        if (nodes_.empty()) remove_element(worksheet_, all);
        else if (auto count = all.attribute("count")) count.set_value(static_cast<unsigned long long>(nodes_.size()));
    }

    struct Given {
        Place meant_for;
        CellValue before; // what the first cell held
    };
    pugi::xml_node worksheet_;
    std::map<Place, pugi::xml_node> nodes_; // by the first cells of what is merged
    std::map<Place, Given> given_;          // by first cells, too
    RangeSet ranges_;                       // what has been split among them
};

} // namespace tarvik::ooxml
