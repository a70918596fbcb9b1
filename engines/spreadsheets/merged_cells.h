#pragma once

#include "engines/automation.h"
#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/range_set.h"

#include <map>
#include <utility>
#include <vector>

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// The merged ranges of a worksheet.
class MergedCells {
public:
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
    /// The range is merged no longer.
    void split(const Range& range)
    {
        auto all = child_named(worksheet_, "mergeCells");
        remove_element(all, nodes_.at(range.first));
        nodes_.erase(range.first);
        if (nodes_.empty()) remove_element(worksheet_, all);
        else if (auto count = all.attribute("count")) count.set_value(static_cast<unsigned long long>(nodes_.size()));
    }

private:
    pugi::xml_node worksheet_;
    std::map<Place, pugi::xml_node> nodes_; // by the first cells of what is merged
    RangeSet ranges_;                       // what has been split among them
};

/// What a text does that is written into a merged range: the range shows one text, the one for
/// whichever of its cells; a second one splits it, as a clerk would, and each goes to its own cell.
class MergedTexts {
public:
    struct Outcome {
        bool splits = false;
        std::vector<std::pair<Place, CellValue>> writes; ///< in this order, once the range is split
    };

    /// `first` is the range's first cell, which holds `held`.
    Outcome write(Place first, Place place, const CellValue& value, const CellValue& held)
    {
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
        return outcome;
    }
    void forget(Place first) { given_.erase(first); }

private:
    struct Given {
        Place meant_for;
        CellValue before; // what the first cell held
    };
    std::map<Place, Given> given_; // by first cells
};

} // namespace tarvik::ooxml
