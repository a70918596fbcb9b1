#pragma once

#include "engines/spreadsheets/calculation/places.h"

#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace tarvik::test {

/// Random rows of numbers and of formulas, for the first sheet of simple_parts(), and by the plainest means which of
/// the formulas depend on a cell.
class RandomSheet {
public:
    using Place = ooxml::Place;
    static constexpr int height = 12, width = 6;

    /// With cycles, formulas read any cell; without, only cells of the rows above.
    RandomSheet(unsigned seed, bool has_cycles) : random_(seed), has_cycles_(has_cycles) {}

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    Place cell() { return {1 + below(height), 1 + below(width)}; }

    /// What stands in <sheetData>, the result behind every formula.
    std::string rows(const std::string& result)
    {
        std::string all;
        for (int row = 1; row <= height; ++row) {
            all += "<row r=\"" + std::to_string(row) + "\">";
            for (int column = 1; column <= width; ++column) {
                all += "<c r=\"" + ooxml::place_name({row, column}) + "\">";
                all += row == 1 || below(3) == 0 ? "<v>" + std::to_string(below(9)) + "</v>"
                                                 : "<f>" + formula({row, column}) + "</f>" + result;
                all += "</c>";
            }
            all += "</row>";
        }
        return all;
    }

    /// The cells that each formula names.
    std::map<Place, std::set<Place>> reads;

    /// The formulas that depend on one of the cells, through any chain.
    std::set<Place> dependents(std::set<Place> changed) const
    {
        std::set<Place> found;
        for (bool has_more = true; has_more;) {
            has_more = false;
            for (const auto& [place, named] : reads)
                for (const auto cell : named)
                    if (changed.contains(cell) && found.insert(place).second) {
                        changed.insert(place);
                        has_more = true;
                    }
        }
        return found;
    }

private:
    std::string formula(Place at)
    {
        auto& named = reads[at];
        const auto any = [&] { return Place{1 + below(has_cycles_ ? height : at.row - 1), 1 + below(width)}; };
        const auto name = [&](Place place) {
            named.insert(place);
            return ooxml::place_name(place);
        };
        const Place first = any(), second = any(), third = any();
        switch (below(5)) {
        case 0: return name(first) + "+1";
        case 1: return "合计*2-" + name({1, 5}); // which the name stands for
        case 2: return "IF(" + name(first) + "&gt;3," + name(second) + "," + name(third) + ")";
        case 3: return "COUNT(G:H)+第二张!B1+" + name(first);
        default:
            const Place low{std::min(first.row, second.row), std::min(first.column, second.column)};
            const Place high{std::max(first.row, second.row), std::max(first.column, second.column)};
            for (int row = low.row; row <= high.row; ++row)
                for (int column = low.column; column <= high.column; ++column) named.insert({row, column});
            return "SUM(" + ooxml::place_name(low) + ":" + ooxml::place_name(high) + ")";
        }
    }

    std::mt19937 random_;
    bool has_cycles_;
};

} // namespace tarvik::test
