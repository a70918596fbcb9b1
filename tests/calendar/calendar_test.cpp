#include "calendar/calendar.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

TEST(TimeOfDay, is_read_behind_a_date)
{
    const std::pair<const char32_t*, double> times[] = {{U"2020-01-05 8:05:09", 29109},
                                                        {U"8:05:09", 29109},
                                                        {U"23:59:59", 86399},
                                                        {U"2020-01-05 12:00:01", 43201},
                                                        {U"0:00:00", 0},
                                                        {U"12:30", 0},
                                                        {U"", 0}};
    for (const auto& [text, seconds] : times) EXPECT_EQ(sntime(text), seconds) << to_utf8(text);
}

TEST(Numbers, are_rounded_half_up_to_two_decimals)
{
    const std::pair<double, const char32_t*> rounded[] = {
        {0.5166666, U"0.52"}, {8.994, U"8.99"}, {2.5, U"2.5"}, {-1, U"-1"},     {0, U"0"},
        {8.985, U"8.99"},     {0.005, U"0.01"}, {12.0, U"12"}, {7.98, U"7.98"}, {2.9999999, U"3"}};
    for (auto [value, text] : rounded) EXPECT_EQ(wct(value), Text(text));
    double noisy = 17.5 - 8.52 - 1;
    EXPECT_EQ(wct(noisy), U"7.98");
    EXPECT_EQ(noisy, 7.98);
    EXPECT_EQ(wcnum(-1), U"-1      ");
    EXPECT_EQ(wcnum(0.52), U"0.52    ");
    EXPECT_EQ(wcnum(1234.567), U"");
}

TEST(Days, are_those_of_the_calendar)
{
    EXPECT_EQ(steaddaf(2000, 1, 1, 2001, 1, 1), 366);
    EXPECT_EQ(steaddaf(1900, 3, 1, 1900, 2, 28), -1);
    EXPECT_EQ(steaddaf(2021, 2, 31, 2021, 3, 3), 0) << "a day behind the last of its month counts on";
    EXPECT_TRUE(is_calendar_day(2000, 2, 29) && !is_calendar_day(1900, 2, 29) && !is_calendar_day(2020, 0, 1));
    EXPECT_EQ(fenzyfenm(100, 2000), 100);
    EXPECT_EQ(fenzyfenm(12, 18), 6);
    EXPECT_EQ(fenmax(3, 10), 7);
    const std::pair<double, double> remainders[] = {{15, 1}, {14, 0}, {-1, 6}, {-7, 0}, {-8, 6}};
    for (const auto& [x, remainder] : remainders) EXPECT_EQ(fenmod(7, x), remainder) << x;
}

TEST(CompactTexts, dates_and_telephone_numbers)
{
    const std::tuple<const char32_t*, const char32_t*> dates[] = {{U"2020.01.05", U"20200105"},
                                                                  {U"2020/1/5", U"202015"},
                                                                  {U"20200105", U"2020-01-05"},
                                                                  {U"2020-01-05", U"2020-01-05"},
                                                                  {U"12", U"12--"}};
    for (const auto& [told, compact] : dates) {
        Text date = told;
        EXPECT_EQ(xsd(date), Text(compact));
    }
    EXPECT_EQ(telecall(U"0755/138"), U"138");
    EXPECT_EQ(telecall(U"138/0755"), U"138");
    EXPECT_EQ(telecall(U"0755"), U"0755");
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
    EXPECT_EQ(*day_of(U"29-12-31"), *day_of(U"2029-12-31"));
    EXPECT_EQ(*day_of(U"30-1-1"), *day_of(U"1930-1-1"));
    for (const char32_t* none : {U"abcd-ef-gh", U"2021-02-29", U"2020-13-01", U"2020-1", U"2020-1-5-1", U"-1-5-2020",
                                 U"2020-001-5", U"2020-01-05x"})
        EXPECT_FALSE(day_of(none)) << to_utf8(none);
}

} // namespace
} // namespace tarvik::test
