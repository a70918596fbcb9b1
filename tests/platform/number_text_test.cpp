#include "tests/platform/widths.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace tarvik::test {
namespace {

constexpr double largest = std::numeric_limits<double>::max();

struct NumberCase {
    std::u32string_view text;
    std::optional<double> number;
    double leading;
};

TEST(Numbers, are_read_as_the_form_tells)
{
    const std::string long_digits(400, '9');
    const Text long_number(long_digits.begin(), long_digits.end()), long_fraction = U"0." + Text(400, U'0') + U"1";
    const NumberCase cases[] = {
        {U"8.5", 8.5, 8.5},
        {U"  -12 ", -12, -12},
        {U"+7", 7, 7},
        {U".5", .5, .5},
        {U"5.", 5, 5},
        {U"1e3", 1000, 1000},
        {U"-1.5E-2", -.015, -.015},
        {U"00123", 123, 123},
        {U"", {}, 0},
        {U" ", {}, 0},
        {U".", {}, 0},
        {U"-", {}, 0},
        {U"+-1", {}, 0},
        {U"- 1", {}, 0},
        {U"e5", {}, 0},
        {U"1e", {}, 1},
        {U"1e+", {}, 1},
        {U"1.2.3", {}, 1.2},
        {U" 12元", {}, 12},
        {U"1 2", {}, 1},
        {U"1,000", {}, 1},
        {U"\t1", {}, 0},
        {U"１２", {}, 0},
        {U"nan", {}, 0},
        {U"inf", {}, 0},
        {U"0x10", {}, 0},
        {U"1e999", largest, largest},
        {U"-1e999", -largest, -largest},
        {U"1e-999", 0, 0},
        {U"1e99999999999999999999", largest, largest},
        {U"0e99999999999999999999", 0, 0},
        {long_number, largest, largest},
        {long_fraction, 0, 0},
    };
    for (const NumberCase& row : cases) {
        const Widths widths{Text(row.text)};
        for (const TextView text : widths.views()) {
            EXPECT_EQ(number(text), row.number) << to_utf8(text);
            EXPECT_EQ(leading_number(text), row.leading) << to_utf8(text);
        }
    }
}

TEST(Numbers, are_written_the_shortest_way)
{
    const std::pair<double, TextView> cases[] = {
        {8.5, U"8.5"},
        {-1, U"-1"},
        {2.0, U"2"},
        {-0.0, U"0"},
        {100, U"100"},
        {0.1, U"0.1"},
        {1. / 3, U"0.3333333333333333"},
        {0.00001, U"0.00001"},
        {1e-15, U"0.000000000000001"},
        {1e-16, U"1e-16"},
        {999999999999999, U"999999999999999"},
        {1e15, U"1e15"},
        {-1.25e100, U"-1.25e100"},
        {1.5e-100, U"1.5e-100"},
        {largest, U"1.7976931348623157e308"},
    };
    for (const auto& [value, text] : cases) EXPECT_EQ(to_utf8(number_text(value)), to_utf8(text));
}

TEST(Numbers, their_texts_read_back_as_the_same)
{
    std::mt19937_64 random(5);
    for (int round = 0; round < 20000; ++round) {
        double value = 0;
        const std::uint64_t bits = random();
        std::memcpy(&value, &bits, sizeof(value));
        if (round % 2 == 0) value = static_cast<double>(static_cast<std::int64_t>(bits >> (bits % 60))) / 1000;
        if (!std::isfinite(value)) continue;
        ASSERT_EQ(number(number_text(value)), value);
    }
}

} // namespace
} // namespace tarvik::test
