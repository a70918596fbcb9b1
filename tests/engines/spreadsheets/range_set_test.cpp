#include "engines/spreadsheets/range_set.h"

#include <random>

#include <gtest/gtest.h>

namespace tarvik::ooxml {

TEST(RangeSet, finds_a_range_wherever_the_cell_lies)
{
    std::mt19937 random(5);
    const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 50; ++round) {
        std::vector<Range> ranges;
        for (int count = below(20); count > 0; --count) {
            const Place first{below(30) + 1, below(30) + 1};
            ranges.push_back({first, {first.row + below(8), first.column + below(8)}});
        }
        const RangeSet set(ranges);
        for (int row = 1; row <= 40; ++row) {
            for (int column = 1; column <= 40; ++column) {
                const Place place{row, column};
                const bool is_in_one = std::any_of(ranges.begin(), ranges.end(),
                                                   [place](const Range& range) { return range.contains(place); });
                const auto* found = set.find(place);
                ASSERT_EQ(found != nullptr, is_in_one);
                ASSERT_TRUE(!found || found->contains(place));
            }
        }
    }
}

} // namespace tarvik::ooxml
