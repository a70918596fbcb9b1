#pragma once

#include "tests/repair_rules/plain_sheets.h"

#include <random>

namespace tarvik::test {

/// Model texts, repair texts, sheets and reports put together from the pieces of the rules themselves.
class RandomLines {
public:
    RandomLines(unsigned seed, const repair_rules::RuleTable& rules);

    /// From 0 to below `limit`.
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(chance_); }
    bool one_in(int many) { return below(many) == 0; }
    Text model() { return joined(models_, 4); }
    Text repairs() { return joined(words_, 3); }

    /// `lines` lines from row 12 on, some of them with something in their columns 5 to `width`.
    Grid sheet(int lines, int width);
    /// Records of repair numbers that the sheet has or might have, in the fields that both commands read.
    std::vector<PlainRecord> records(int count, int lines);

private:
    Text joined(const std::vector<Text>& pieces, int most);
    CellValue repair_number(int line);

    std::mt19937 chance_;
    std::vector<Text> models_, words_;
};

} // namespace tarvik::test
