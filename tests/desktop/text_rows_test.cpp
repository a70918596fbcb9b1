#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_area.h"
#include "desktop/text_view/text_search.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik::test {
namespace {

/// A font whose characters are 10 wide, Chinese ones 20, marked ones of size n n times as wide.
FontSizes plain_font()
{
    return {[](int points, double) { return std::max(points, 1); },
            [](int factor) {
                const auto width = [factor](char32_t c) { return factor * (c >= 0x2e80 ? 20 : 10); };
                return FontSize{width, 20.0 * factor, 15.0 * factor, 80};
            }};
}

class Squares final : public LineSource {
public:
    explicit Squares(std::size_t count) : count_(count) {}
    std::size_t line_count() const override { return count_; }
    void append_line(std::size_t index, Text& target) const override { target.append(index * index % 7, U'#'); }

private:
    std::size_t count_;
};

std::vector<std::pair<std::size_t, std::size_t>> plain_lines(const Text& text)
{
    std::vector<std::pair<std::size_t, std::size_t>> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != U'\r' && text[i] != U'\n') continue;
        const std::size_t end = i;
        if (text[i] == U'\r' && i + 1 < text.size() && text[i + 1] == U'\n') ++i;
        lines.emplace_back(start, end);
        start = i + 1;
    }
    lines.emplace_back(start, text.size());
    return lines;
}

void expect_lines(const TextLines& lines, const Text& text)
{
    const auto expected = plain_lines(text);
    ASSERT_EQ(lines.size(), text.size());
    ASSERT_EQ(lines.line_count(), expected.size());
    for (std::size_t i = 0; i < expected.size(); i += i < 50 || i + 50 > expected.size() ? 1 : 7) {
        ASSERT_EQ(lines.line_start(i), expected[i].first) << i;
        ASSERT_EQ(lines.line_end(i), expected[i].second) << i;
        const std::size_t next = i + 1 < expected.size() ? expected[i + 1].first : text.size() + 1;
        for (std::size_t at : {expected[i].first, expected[i].second, next - 1}) ASSERT_EQ(lines.line_at(at), i) << at;
    }
}

Text random_text(std::mt19937& random, std::size_t size)
{
    constexpr std::u32string_view characters = U"ab 中\r\n\r\n\U00020000";
    Text text;
    while (text.size() < size) text += characters[random() % characters.size()];
    return text;
}

// Edits cut a large indexed buffer and small ones anywhere, also between a CR and its LF.
TEST(TextLines, are_those_of_the_whole_text_whatever_pieces_it_lies_in)
{
    std::mt19937 random(11);
    for (int round = 0; round < 4; ++round) {
        Text plain = random_text(random, 10'000);
        PaneText text{TextView(plain)};
        TextLines lines;
        for (int edit = 0; edit < 6; ++edit) {
            const std::size_t start = random() % (plain.size() + 1), length = random() % 50;
            const Text inserted = random_text(random, random() % 8);
            plain.replace(start, std::min(length, plain.size() - start), inserted);
            text.replace(Position::at_offset(start), length, inserted);
            lines = TextLines(text, lines);
            expect_lines(lines, plain);
        }
    }
}

// Stretches are cut at line ends and, in a line that is longer than one, anywhere.
TEST(Sought, is_found_as_in_a_plain_walk_in_both_directions)
{
    std::mt19937 random(3);
    Text plain = random_text(random, 30'000) + Text(1'200'000, U'x') + U"AB ab" + random_text(random, 20'000);
    const TextLines lines(PaneText{TextView(plain)}, {});
    const Text lowered = lower(plain);
    const auto is_letter = [&](std::size_t at) {
        return at < plain.size() && lowered[at] >= U'a' && lowered[at] <= U'z';
    };
    for (const auto& [text, whole_words] : {std::pair("ab", false), {"B", true}, {"中", false}}) {
        std::vector<std::size_t> starts;
        const Text needle = lower(from_qt(text));
        for (std::size_t at = 0; (at = lowered.find(needle, at)) != Text::npos;) {
            const std::size_t end = at + needle.size();
            const bool counts = !whole_words || (!(at > 0 && is_letter(at - 1)) && !is_letter(end));
            if (counts) starts.push_back(at);
            at = counts ? end : at + 1;
        }
        ASSERT_FALSE(starts.empty());
        Sought sought(text, whole_words, false);
        while (sought.count_on(lines)) {
        }
        EXPECT_EQ(sought.count(), starts.size());
        for (std::size_t i = 0; i < starts.size(); i += 97) {
            EXPECT_EQ(sought.next(lines, starts[i], true)->start, starts[i]);
            EXPECT_EQ(sought.next(lines, starts[i] + needle.size(), true)->start, starts[(i + 1) % starts.size()]);
            EXPECT_EQ(sought.next(lines, starts[i], false)->start, starts[(i + starts.size() - 1) % starts.size()]);
            EXPECT_EQ(sought.number(starts[i]), i + 1);
        }
    }
    EXPECT_EQ(Sought("^a[ b]+$", false, true).next(TextLines(PaneText{TextView(U"xa b\r\na b\n")}, {}), 0, true),
              (TextRange{6, 9}));
    EXPECT_FALSE(Sought("(", false, true).error().isEmpty());
}

struct RowsOf {
    explicit RowsOf(const Text& text, std::optional<double> width = {}, TextLook look = {})
        : lines(PaneText{TextView(text)}, {}), rows(lines, font, std::move(look), width)
    {
    }
    std::vector<Text> all() const
    {
        std::vector<Text> texts;
        for (std::optional<Row> row = rows.row_at(0); row; row = rows.next(*row)) {
            texts.emplace_back();
            lines.append_to(row->start, row->end - row->start, texts.back());
        }
        return texts;
    }
    FontSizes font = plain_font();
    TextLines lines;
    TextRows rows;
};

TEST(TextRows, break_between_words_and_characters)
{
    const std::vector<std::tuple<Text, double, std::vector<Text>>> cases{
        {U"one two three", 80, {U"one two ", U"three"}},
        {U"中文字符", 50, {U"中文", U"字符"}},
        {U"中文。字", 40, {U"中", U"文。", U"字"}},     // no stop at the beginning of a row
        {U"中（文）字", 60, {U"中", U"（文）", U"字"}}, // no opening mark at the end of one
        {U"abcdefghij", 40, {U"abcd", U"efgh", U"ij"}}, // no place to break: anywhere
        {U"ab   cd", 30, {U"ab   ", U"cd"}},            // blanks hang over the edge
        {U"中", 5, {U"中"}},                            // narrower than a character
        {U"a\r\n\r\nb\r", 80, {U"a", U"", U"b", U""}},
    };
    for (const auto& [text, width, expected] : cases) EXPECT_EQ(RowsOf(text, width).all(), expected);
}

TEST(TextRows, hold_every_character_once_and_are_found_from_each)
{
    std::mt19937 random(5);
    const Text text = random_text(random, 1000) + Text(15'000, U'x') + random_text(random, 500);
    for (const std::optional<double> width : {std::optional<double>(), std::optional<double>(333)}) {
        const RowsOf of(text, width);
        std::optional<Row> before;
        for (std::optional<Row> row = of.rows.row_at(0); row; row = of.rows.next(*row)) {
            ASSERT_EQ(of.rows.row_at(row->start).start, row->start);
            if (row->end > row->start) {
                ASSERT_EQ(of.rows.row_at(row->end - 1).end, row->end);
            }
            if (before) {
                ASSERT_EQ(of.rows.previous(*row)->start, before->start);
            }
            before = row;
        }
        EXPECT_EQ(before->end, text.size());
    }
}

TEST(TextRows, places_in_a_long_line_agree_from_both_sides)
{
    Text text = U"ab\t";
    for (int i = 0; i < 5000; ++i) text += i % 3 == 0 ? U"中文\t" : U"word ";
    const RowsOf of(text);
    const Row row = of.rows.row_at(0);
    double x = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i % 97 == 0) {
            ASSERT_EQ(of.rows.x_of(row, i), x) << i;
            ASSERT_EQ(of.rows.offset_at(row, x + 1), i);
        }
        x = text[i] == U'\t' ? (std::floor(x / 80) + 1) * 80 : x + (text[i] >= 0x2e80 ? 20 : 10);
    }
    const auto shown = of.rows.between(row, 30'000, 30'100);
    EXPECT_LE(shown.front().x, 30'000);
    EXPECT_GE(shown.back().x + shown.back().width, 30'100);
    EXPECT_LT(shown.size(), 12U);
}

TEST(TextRows, marks_have_their_own_size)
{
    const RowsOf of(U"a bb c bb", std::nullopt, {{{Position(3), 2, 0, 2}, {Position(8), 2, 0, 3}}, 0});
    const Row row = of.rows.row_at(0);
    EXPECT_EQ(row.height, 60);
    EXPECT_EQ(of.rows.x_of(row, 9), 10 + 10 + 40 + 30 + 60);
}

TEST(TextArea, breaks_the_lines_of_prose_and_leaves_a_table_whole)
{
    const FontSizes font = plain_font();
    TextArea area(font);
    area.set_size(110, 100);
    area.set_wraps_prose(true);
    area.set_text(PaneText(TextView(U"one two three four\r\n")), false);
    EXPECT_EQ(area.shown()[1].row.start, 8U);
    area.set_text(PaneText(TextView(U"one two\tthree four five\r\n")), false);
    EXPECT_TRUE(area.is_table());
    EXPECT_EQ(area.shown()[0].row.end, 23U);
    area.set_text(PaneText(TextView(U"one two three four\r\n")), false);
    area.set_wraps_prose(false);
    EXPECT_EQ(area.shown()[0].row.end, 18U);
}

TEST(TextArea, shows_the_end_at_the_bottom_and_goes_no_further_than_needed)
{
    const FontSizes font = plain_font();
    TextArea area(font);
    area.set_size(200, 100); // five rows
    area.set_text(PaneText(std::make_shared<Squares>(300'000)), false);
    area.scroll_to(area.lines().size());
    EXPECT_EQ(area.shown().size(), 5U);
    EXPECT_EQ(area.lines().line_at(area.top()), 300'001U - 5);
    const std::size_t above = area.lines().line_start(299'000);
    area.bring_into_view(above, false);
    EXPECT_EQ(area.top(), above);
    area.bring_into_view(area.lines().line_start(299'003), false);
    EXPECT_EQ(area.top(), above) << "it shows already";
    area.bring_into_view(area.lines().line_start(299'005), false);
    EXPECT_EQ(area.lines().line_at(area.top()), 299'001U);
    area.bring_into_view(area.lines().line_start(299'100), true);
    EXPECT_EQ(area.lines().line_at(area.top()), 299'100U);
    area.scroll_rows(-3);
    EXPECT_EQ(area.lines().line_at(area.top()), 299'097U);
    EXPECT_EQ(area.offset_at(-5, 45), area.lines().line_start(299'099));
}

} // namespace
} // namespace tarvik::test
