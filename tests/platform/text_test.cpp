#include "platform/text/document.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace tarvik::test {
namespace {

/// One text in every width that holds it.
class Widths {
public:
    explicit Widths(Text text)
        : wide_(std::move(text)), basic_(wide_.begin(), wide_.end()), narrow_(wide_.begin(), wide_.end())
    {
        char32_t bits = 0;
        for (const char32_t c : wide_) bits |= c;
        if (bits <= 0xff) views_.emplace_back(narrow_.data(), narrow_.size());
        if (bits <= 0xffff) views_.emplace_back(basic_.data(), basic_.size());
        views_.emplace_back(wide_);
    }
    Widths(const Widths&) = delete;
    Widths& operator=(const Widths&) = delete;

    const std::vector<TextView>& views() const { return views_; }

private:
    Text wide_;
    std::u16string basic_;
    std::vector<std::uint8_t> narrow_;
    std::vector<TextView> views_;
};

Text random_text(std::mt19937& random, std::size_t size, std::u32string_view letters)
{
    Text text(size, U' ');
    for (char32_t& c : text) c = letters[random() % letters.size()];
    return text;
}

/// What find() gives in every pair of widths, held against the standard library's search.
void expect_found_alike(const Text& text, const Text& needle, std::size_t from)
{
    const std::size_t expected = text.find(needle, from);
    const Widths texts(text), needles(needle);
    for (const TextView t : texts.views())
        for (const TextView n : needles.views())
            ASSERT_EQ(t.find(n, from), expected) << to_utf8(text) << " / " << to_utf8(needle) << " from " << from
                                                 << ", widths " << t.width() << n.width();
}

TEST(TextSearch, agrees_with_the_plain_search_in_every_width)
{
    std::mt19937 random(7);
    for (const std::u32string_view letters : {U"ab", U"abé", U"中国a", U"a𠀀中"})
        for (int round = 0; round < 1500; ++round) {
            const Text text = random_text(random, random() % 120, letters);
            Text needle = random_text(random, random() % 9, letters);
            if (round % 3 == 0 && text.size() > 4) needle = text.substr(random() % text.size(), random() % 40);
            expect_found_alike(text, needle, random() % (text.size() + 2));
        }
}

TEST(TextSearch, agrees_on_repeats_that_defeat_a_scan)
{
    std::mt19937 random(11);
    for (int round = 0; round < 400; ++round) {
        const Text period = random_text(random, 1 + random() % 6, U"ab");
        Text text, needle;
        while (text.size() < 900) text += period;
        for (std::size_t size = 20 + random() % 200; needle.size() < size;) needle += period;
        // A break in the text, in the needle, or in both at the same place of the period.
        if (random() % 2 == 0) text[random() % text.size()] = U'c';
        if (random() % 2 == 0) needle[random() % needle.size()] = U'c';
        if (random() % 2 == 0) text.replace(600, needle.size(), needle);
        expect_found_alike(text, needle, random() % 50);
    }
}

TEST(TextSearch, characters_and_edges)
{
    const Widths latin(U"abcab"), chinese(U"中a国a");
    for (const TextView text : latin.views()) {
        EXPECT_EQ(text.find(U'c', 2), 2U);
        EXPECT_EQ(text.find(U'a', 4), npos);
        EXPECT_EQ(text.rfind(U'a'), 3U);
        EXPECT_EQ(text.find(U'š'), npos) << "U+0161 is no 'a' although its low byte is";
        EXPECT_EQ(text.find(U"", 5), 5U);
        EXPECT_EQ(text.find(U"", 6), npos);
        EXPECT_EQ(text.find(U"abcabc"), npos);
    }
    for (const TextView text : chinese.views()) EXPECT_EQ(text.rfind(U'国'), 2U);
    EXPECT_EQ(TextView().find(U'a'), npos);
}

TEST(TextView, equality_and_hash_do_not_depend_on_the_width)
{
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        const Text text = random_text(random, 1 + random() % 12, U"aé");
        Text changed = text;
        changed[random() % changed.size()] = U'b';
        const Widths widths(text), other(changed);
        for (const TextView a : widths.views()) {
            for (const TextView b : widths.views()) {
                EXPECT_EQ(a, b);
                EXPECT_EQ(a.hash(), b.hash());
            }
            for (const TextView b : other.views()) {
                EXPECT_FALSE(a == b);
                EXPECT_FALSE(a.substr(1) == b);
                EXPECT_NE(a.hash(), b.hash());
            }
            EXPECT_EQ(U"x" + a, U"x" + text);
        }
    }
}

TEST(Document, lowers_every_width_and_keeps_its_places)
{
    Text ascii;
    for (char32_t c = 0; c < 0x100; ++c)
        ascii += Text(1 + c % 3, c); // capitals at every place of a stretch, alone and among others
    Text chinese;                    // with every other character among it
    for (char32_t c = 0; c < 0x10000; ++c) chinese += Text(16, U'中') + c;
    for (const Text& text : {ascii, ascii + U"ΩЖ中Ａ", ascii + U"Ω𠀀Ж", Text(50, U'Q'), chinese}) {
        const Document document{text};
        EXPECT_TRUE(document.text() == TextView(text));
        EXPECT_TRUE(document.lowered() == TextView(lower(text)));
    }
}

TEST(Document, shares_its_twin_and_its_buffer)
{
    const Document document(make_buffer(U"ABC\r\nX"), 3), closed = document.with_closing_line_end();
    Document copy;
    copy = document;
    EXPECT_EQ(closed.text(), U"ABC\r\n");
    EXPECT_EQ(closed.lowered(), U"abc\r\n");
    EXPECT_EQ(document.lowered(), U"abc");
    EXPECT_EQ(copy.lowered_buffer(), document.lowered_buffer());
    EXPECT_EQ(closed.lowered_buffer(), document.lowered_buffer());

    const Document open(U"Aé中");
    EXPECT_EQ(open.with_closing_line_end().text(), U"Aé中\r\n");
    EXPECT_EQ(open.text(), U"Aé中");
    EXPECT_EQ(closed.with_closing_line_end().text(), U"ABC\r\n\r\n");
}

TEST(Text, positions_count_from_one)
{
    EXPECT_EQ(mid(U"abc", 2, 1), U"b");
    EXPECT_EQ(mid(U"abc", 3), U"c");
    EXPECT_EQ(mid(U"abc", 4, 2), U"");
    EXPECT_EQ(mid(U"abc", 2, 99), U"bc");
    EXPECT_EQ(mid(U"abc", 0, 2), U"");
    EXPECT_EQ(mid(U"abc", npos, npos), U"");
    EXPECT_EQ(instr(U"abab", U"ab"), 1U);
    EXPECT_EQ(instr(U"abab", U"ab", 2), 3U);
    EXPECT_EQ(instr(U"abab", U"ab", 0), 1U);
    EXPECT_EQ(instr(U"abab", U"ab", 4), 0U);
    EXPECT_EQ(instr(U"abab", U"ab", npos), 0U);
    EXPECT_EQ(instr(U"abab", U""), 0U);
}

TEST(Text, only_the_blank_is_trimmed)
{
    EXPECT_EQ(ltrim(U"  a b "), U"a b ");
    EXPECT_EQ(rtrim(U"  a b "), U"  a b");
    EXPECT_EQ(trim(U"  "), U"");
    EXPECT_EQ(trim(U" \t\u3000\u00a0 "), U"\t\u3000\u00a0");
}

TEST(LetterCase, maps_letter_for_letter)
{
    const Text capitals = U"AZÀÖØÞŸŁŽǄΑΩΆЀЯЁԱẞẤＡＺⅠⅫ", small = U"azàöøþÿłžǆαωάѐяёաßấａｚⅰⅻ";
    EXPECT_EQ(lower(capitals), small);
    EXPECT_EQ(upper(small), U"AZÀÖØÞŸŁŽǄΑΩΆЀЯЁԱßẤＡＺⅠⅫ") << "ß has no single capital in use";
    EXPECT_EQ(lower(U"×÷@[`{中国　１、𠀀①"), U"×÷@[`{中国　１、𠀀①");
    EXPECT_EQ(upper(U"ςſıµﬁŉ中"), U"ΣSIΜﬁŉ中");
    for (char32_t c = 0; c < 0x11000; ++c) {
        EXPECT_EQ(lower(lower(c)), lower(c)) << std::hex << static_cast<unsigned>(c);
        EXPECT_EQ(upper(upper(c)), upper(c)) << std::hex << static_cast<unsigned>(c);
        EXPECT_EQ(lower(upper(lower(c))), lower(upper(c))) << std::hex << static_cast<unsigned>(c);
    }
}

TEST(Utf8, invalid_bytes_and_surrogates_are_replaced_one_by_one)
{
    const Text all = U"a\u00e9\u4e2d\U00020000\U0010ffff";
    EXPECT_EQ(from_utf8(to_utf8(all)), all);
    EXPECT_EQ(from_utf8("a\xe4\xb8z"), U"a\ufffd\ufffdz") << "cut by another character";
    EXPECT_EQ(from_utf8("\xf0\x9f\x98"), U"\ufffd\ufffd\ufffd") << "cut by the end";
    EXPECT_EQ(from_utf8("\xc0\x80\xe0\x80\x80"), U"\ufffd\ufffd\ufffd\ufffd\ufffd") << "overlong";
    EXPECT_EQ(from_utf8("\xed\xa0\x80"), U"\ufffd\ufffd\ufffd") << "a surrogate";
    EXPECT_EQ(from_utf8("\xf4\x90\x80\x80"), U"\ufffd\ufffd\ufffd\ufffd") << "behind the last character";
    EXPECT_EQ(to_utf8(Text{char32_t{0xd800}, char32_t{0x110000}}), "\xef\xbf\xbd\xef\xbf\xbd");
}

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
        {U"", {}, 0},
        {U".", {}, 0},
        {U"-", {}, 0},
        {U"- 1", {}, 0},
        {U"1e", {}, 1},
        {U"1e+", {}, 1},
        {U"1.2.3", {}, 1.2},
        {U" 12元", {}, 12},
        {U"1,000", {}, 1},
        {U"\t1", {}, 0},
        {U"１２", {}, 0},
        {U"nan", {}, 0},
        {U"inf", {}, 0},
        {U"0x10", {}, 0},
        {U"1e999", largest, largest},
        {U"-1e999", -largest, -largest},
        {U"1e-999", 0, 0},
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
        {-0.0, U"0"},
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
