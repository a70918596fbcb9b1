#include "calendar/date_text.h"
#include "columns/sort.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tarvik {
namespace {

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

TEST(DateText, is_normalised_and_read)
{
    const std::tuple<const char32_t*, const char32_t*, const char32_t*> normalised[] = {
        {U"20200105", U"2020-01-05", U"2020-01-05"},
        {U"2020.1.5", U"2020.1.5", U"2020-1-5"},
        {U"2020/01/05", U"2020/01/05", U"2020-01-05"},
        {U"2020\\1\\5", U"2020\\1\\5", U"2020-1-5"},
        {U"abcdefgh", U"abcd-ef-gh", U"abcd-ef-gh"},
        {U"20-1-5", U"20-1-5", U"error"},
        {U"", U"", U"error"}};
    for (const auto& [written, rewritten, date] : normalised) {
        Text text = written;
        EXPECT_EQ(dsx(text), Text(date));
        EXPECT_EQ(text, Text(rewritten));
    }
    EXPECT_EQ(*day_of(U"2020-3-1") - *day_of(U"2020-02-28"), 2);
    EXPECT_EQ(*day_of(U"20-01-05"), *day_of(U"2020-1-5"));
    EXPECT_EQ(*day_of(U"99-12-31") + 1, *day_of(U"2000-1-1"));
    for (const char32_t* none : {U"abcd-ef-gh", U"2021-02-29", U"2020-13-01", U"2020-1", U"2020-1-5-1", U"-1-5-2020",
                                 U"2020-001-5", U"2020-01-05x"})
        EXPECT_FALSE(day_of(none)) << to_utf8(none);
}

} // namespace
} // namespace tarvik
