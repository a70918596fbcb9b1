#pragma once

#include "tests/repair_rules/plain_sheets.h"

#include <random>

namespace tarvik::test {

/// Model texts, repair texts, sheets and reports put together from the pieces of the rules themselves.
class RandomLines {
public:
    RandomLines(unsigned seed, const RuleTable& rules);

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

inline RandomLines::RandomLines(unsigned seed, const RuleTable& rules) : chance_(seed)
{
    for (const Chain* chain : {&rules.update, &rules.first_entry}) {
        for (const Condition& group : chain->groups)
            for (int weight = 0; weight < 12; ++weight)
                models_.insert(models_.end(), group.all_of.begin(), group.all_of.end());
        for (const Rule& rule : chain->rules) {
            models_.insert(models_.end(), rule.model.all_of.begin(), rule.model.all_of.end());
            words_.push_back(rule.repair_word.empty() ? U"已清洁" : rule.repair_word);
        }
    }
    for (const LineRule& rule : rules.line_rules) {
        auto& pieces = rule.column == 2 ? models_ : words_;
        pieces.insert(pieces.end(), rule.any_of.begin(), rule.any_of.end());
    }
}

inline Text RandomLines::joined(const std::vector<Text>& pieces, int most)
{
    Text text;
    for (int count = below(most) + 1; count > 0; --count)
        text += pieces[static_cast<std::size_t>(below(static_cast<int>(pieces.size())))];
    return text;
}

// Some as numbers, some with zeros ahead, some no number at all.
inline CellValue RandomLines::repair_number(int line)
{
    switch (below(6)) {
    case 0: return U"00" + number_text(line);
    case 1: return U"RMA" + number_text(line);
    case 2: return U" " + number_text(line) + U".0 ";
    default: return static_cast<double>(line);
    }
}

inline Grid RandomLines::sheet(int lines, int width)
{
    Grid sheet;
    const auto set = [&](int row, int column, const CellValue& value) {
        if (value != CellValue()) sheet[{row, column}] = value;
    };
    set(3, 1, 5.0);
    for (int line = 0; line < lines; ++line) {
        const int row = 12 + line;
        if (!one_in(12)) set(row, 1, repair_number(line));
        set(row, 2, model());
        set(row, 3, U"说明" + number_text(line));
        if (!one_in(4)) continue;
        for (int column = 5; column <= width; ++column)
            if (one_in(3)) {
                const bool is_text = column < 8 || column > 12;
                set(row, column, is_text ? CellValue(repairs()) : static_cast<double>(below(90)));
            }
    }
    if (width > 12) set(12, width, U"备注");
    return sheet;
}

inline std::vector<PlainRecord> RandomLines::records(int count, int lines)
{
    std::vector<PlainRecord> records;
    for (int number = 0; number < count; ++number) {
        PlainRecord record(17, Text());
        for (Text& field : record)
            if (!one_in(8)) field = lower(repairs());
        record[2] = record[4] = number_text(below(lines + 5));
        if (one_in(5)) record[2] = record[4] = U"0" + record[2] + U".";
        if (!one_in(6)) record[14] = repairs();
        record[16] = one_in(5) ? Text() : number_text(below(20000) / 100.0);
        records.push_back(std::move(record));
    }
    return records;
}

} // namespace tarvik::test
