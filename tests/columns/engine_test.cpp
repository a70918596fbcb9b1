#include "columns/columns.h"
#include "columns/rows.h"
#include "tests/columns/session.h"

#include <cmath>
#include <random>

namespace tarvik::test {
namespace {

TEST(ColumnEngine, equals_a_slow_one_in_random_sessions)
{
    for (unsigned seed = 1; seed <= 100 && !testing::Test::HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Session session([&random](std::size_t below) { return random() % below; });
        std::string keys;
        for (int i = 0; i < 60 && !testing::Test::HasFatalFailure(); ++i) {
            keys += session.step() + " ";
            session.compare(keys);
        }
    }
}

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

TEST(SortKey, weighs_the_codes_of_the_characters)
{
    // 甲 is BC D7 in GBK, so its code is -17193; 乙 is D2 D2, -11566.
    const std::pair<const char32_t*, double> keys[] = {
        {U"", 0},
        {U"a", 0},
        {U"9", 57},
        {U"10", 538},
        {U"ab", 292},
        {U"-1", 499},
        {U"1.5", 5413},
        {U"123a", 54607},
        {U"~bc", 4 * 126 + 2 * 98 + 99},
        {U"甲", 2 * -17193.0},
        {U"甲乙", 2 * -17193.0 - 11566},
        {U"甲a", 2 * -17193.0 + 97},
        {U"a甲", 2 * 97 - 17193.0},
        {U"甲ab", 2 * 97 + 98},
        {U"甲甲甲甲甲", 15 * -17193.0},
    };
    for (const auto& [text, key] : keys) EXPECT_EQ(sunnum(text), key) << to_utf8(text);
    EXPECT_EQ(sunnum(Text(20, U'a')), 97 * (std::pow(2, 18) - 1)); // letters count up to position 18
    EXPECT_EQ(sunnum(Text(13, U'甲')), -17193.0 * 255);
    EXPECT_GT(sunnum(Text(400, U'1')), 1e300);
    EXPECT_FALSE(std::isnan(sunnum(U"123" + Text(400, U'甲'))));
}

TEST(SelectionSwaps, are_those_of_the_plain_loop)
{
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::vector<double> keys(random() % 40);
        for (double& key : keys) key = static_cast<double>(random() % 9) - 3;
        std::vector<double> swapped = keys, plain = keys;
        for (const Swap& swap : selection_swaps(keys)) std::swap(swapped[swap.first], swapped[swap.second]);
        for (std::size_t a = 0; a < plain.size(); ++a) {
            std::size_t m = a;
            for (std::size_t b = a + 1; b < plain.size(); ++b)
                if (plain[m] != 0 && plain[b] != 0 && plain[m] > plain[b]) m = b;
            std::swap(plain[a], plain[m]);
        }
        ASSERT_EQ(swapped, plain);
    }
}

} // namespace
} // namespace tarvik::test
