#include "columns/row_scan.h"

#include "platform/text/document.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik {
namespace {

TEST(RowScan, finds_the_same_rows_with_and_without_an_index)
{
    std::mt19937 random(3);
    const std::u32string_view alphabets[] = {U"ab\t", U"中ab\t", U"𠀀中a\t"}; // of one, two and four bytes
    for (std::size_t round = 0; round < 60; ++round) {
        const std::u32string_view letters = alphabets[round % 3];
        Text text;
        const std::size_t line_ends = random() % 3 == 0 ? 2 : 40; // few of them make rows that are too long
        for (std::size_t i = 0; i < 4000; ++i) {
            if (random() % 1000 < line_ends) text += U"\r\n";
            else text += letters[random() % letters.size()];
        }
        const Document scanned(text);
        const Document document = scanned; // NOLINT(performance-unnecessary-copy-initialization): shares the index
        for (int scan = 0; scan < 100; ++scan) scanned.note_keyed_scan();
        ASSERT_NE(document.index(), nullptr);
        for (int needles = 0; needles < 30; ++needles) {
            const Text needle = text.substr(random() % 3900, 4 + random() % 5);
            const std::size_t room = random() % 4 == 0 ? random() % 3 : 1'000'000;
            const RowScan plain = scan_rows(document.lowered(), needle, room),
                          indexed = scan_rows(document.lowered(), needle, room, document.index());
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
