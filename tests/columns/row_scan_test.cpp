#include "columns/row_scan.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik {
namespace {

TEST(RowScan, finds_the_same_rows_with_and_without_an_index)
{
    std::mt19937 random(3);
    for (int round = 0; round < 60; ++round) {
        Text document;
        const std::size_t line_ends = random() % 3 == 0 ? 2 : 40; // few of them make rows that are too long
        for (std::size_t i = 0; i < 4000; ++i) {
            if (random() % 1000 < line_ends) document += U"\r\n";
            else document += U"ab\t"[random() % 3];
        }
        const SubstringIndex index{TextView(document)};
        for (int needles = 0; needles < 30; ++needles) {
            Text needle = document.substr(random() % 3900, 5 + random() % 4);
            const std::size_t room = random() % 4 == 0 ? random() % 3 : 1'000'000;
            const RowScan plain = scan_rows(document, needle, room),
                          indexed = scan_rows(document, needle, room, &index);
            ASSERT_EQ(plain.matches, indexed.matches);
            ASSERT_EQ(plain.full, indexed.full);
            ASSERT_EQ(plain.rows.size(), indexed.rows.size());
            for (std::size_t i = 0; i < plain.rows.size(); ++i)
                ASSERT_TRUE(plain.rows[i].data() == indexed.rows[i].data() &&
                            plain.rows[i].size() == indexed.rows[i].size());
        }
    }
}

} // namespace
} // namespace tarvik
