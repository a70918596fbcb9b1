#include "platform/text/text_search.h"
#include "reading/queries.h"
#include "tests/reading/reading_desk.h"
#include "tests/reading/slow_searches.h"

#include <gmock/gmock.h>

namespace tarvik::test {
namespace {

using ::testing::ElementsAre;

class Query : public ReadingDesk {
protected:
    std::mt19937 random{20240301};

    std::vector<Text> results(const TextArray& array, std::size_t count) const
    {
        std::vector<Text> texts;
        for (std::size_t i = 0; i < count; ++i) texts.push_back(array.get(i).str());
        return texts;
    }
    void run(TextView text, TextView query, bool by_enter)
    {
        test.open_text(text);
        form1.query_box().set_text(query.str());
        test.dialogs.replies = {Answer::Yes};
        by_enter ? query_by_enter(program) : Command1_Click(program, 1);
    }
    /// `expected` is what the slow search gives; passes when arrays, counts, flags and the box agree.
    void expect_same(const TextArray& array, const Pieces& expected, TextView text, TextView query)
    {
        const std::string story = "query [" + to_utf8(query) + "] text [" + to_utf8(text).substr(0, 2000) + "]";
        ASSERT_EQ(form1.resultcount, expected.count) << story;
        ASSERT_EQ(results(array, expected.stored.size()), expected.stored) << story;
        ASSERT_TRUE(array.get(expected.stored.size()).empty()) << story;
        ASSERT_EQ(form1.number_box().text(), number_text(expected.count)) << story;
        ASSERT_EQ(test.dialogs.take_messages().empty() ? false : form1.RichTextBox1.empty(),
                  expected.stored.empty() || expected.stored.front().empty())
            << story;
    }
};

TEST_F(Query, occurrences_and_marks_equal_a_slow_search)
{
    for (int round = 0; round < 4000; ++round) {
        const Text text = random_text(random, {U"a", U"a", U"b", U"测", U" ", U"aab"}, 40);
        const Text needle = random_text(random, {U"a", U"a", U"b", U"测"}, 4);
        std::size_t expected_last = 0;
        const auto expected = places_marked(text, needle, expected_last);
        const MatchPlaces places = places_to_mark(text, needle);
        std::vector<std::size_t> marked;
        for (const Position place : places.marked) marked.push_back(place.number());
        ASSERT_EQ(marked, expected) << to_utf8(text) << '|' << to_utf8(needle);
        ASSERT_EQ(places.last_found, expected_last) << to_utf8(text) << '|' << to_utf8(needle);

        Occurrences walk(text, needle);
        for (std::size_t i = 0; !needle.empty() && i < text.size(); i += 1 + random() % 3)
            ASSERT_EQ(walk.at_or_behind(i), text.find(needle, i));
    }
}

TEST_F(Query, pieces_between_separators_equal_a_slow_search)
{
    const std::vector<Text> separators{U"。\r\n", U".\r\n", U";", U" ", U"; ", U"\r", U"aa", U".", U"。", U"数目"};
    for (int round = 0; round < 1500; ++round) {
        const Text& separator = separators[random() % separators.size()];
        std::vector<Text> pieces{U"a", U"B", U"测", U" ", U"\r\n", U"\r", U"x。\r\n", U".\r\n", U";", separator};
        Text text = random_text(random, pieces, 60);
        if (round % 50 == 0) text += Text(4990 + random() % 20, U'x') + separator + U"a";
        if (round % 45 == 0) text += U"a" + Text(39990 + random() % 10, U'x') + separator;
        const Text query = random_text(random, {U"a", U"b", U"测", U" ", U"\r"}, 3);
        form1.number_box().set_text(separator);
        const bool asked = !query.empty();
        run(text, query, round % 2 == 0);
        if (!asked) continue;
        const Text t = lower(text), q = lower(ltrim(query));
        const Pieces expected = pieces_between_separators(t, q, separator);
        expect_same(test.module1().hits, expected, text, query);
        ASSERT_FALSE(form1.cutopen);
        ASSERT_EQ(form1.resultpos, 1);
    }
}

TEST_F(Query, sentences_equal_a_slow_search_with_the_flag_carried_over)
{
    form1.Option3.set_value(true);
    for (int round = 0; round < 2000; ++round) {
        Text text = random_text(
            random, {U"a", U"A", U"b", U"测", U" ", U"\r\n", U"。\r\n", U"。 \r\n", U".\r\n", U"!\r\n", U"。", U"\n"},
            50);
        if (round % 9 == 0) text += U"a" + Text(1990 + random() % 10, U'x') + U"。\r\nb.\r\n";
        if (round % 40 == 0) text += U"a" + Text(39990 + random() % 20, U'x') + U"。\r\n";
        const Text query = random_text(random, {U"a", U"A", U"b", U"测", U"\r\n"}, 2) + U"a";
        const bool by_enter = round % 2 == 0;
        form1.query_box().set_text(query);
        form1.cutopenfile = round % 7 == 0;
        if (form1.cutopenfile) form1.cutdistance = random() % 30 + 1;
        const Pieces expected = sentences(text, query, by_enter, form1.cutopenfile, form1.cutdistance);
        run(text, query, by_enter);
        expect_same(test.module1().filehits, expected, text, query);
        ASSERT_EQ(form1.cutopenfile, expected.open) << to_utf8(text) << '|' << to_utf8(query);
    }
}

TEST_F(Query, a_second_press_of_the_sentence_query_keeps_its_results)
{
    form1.Option3.set_value(true);
    form1.query_box().set_text(U"词");
    test.open_text(U"零。\r\n词一。\r\n词二"); // the last sentence has no end
    for (int press = 0; press < 2; ++press) {
        Command1_Click(program, 1);
        EXPECT_TRUE(form1.cutopenfile);
        EXPECT_EQ(form1.RichTextBox1.text(), U"\r\n词一。\r\n") << press;
        EXPECT_EQ(form1.number_box().text(), U"2");
    }
}

TEST_F(Query, entries_of_a_dictionary_equal_a_slow_search)
{
    const struct {
        std::string file;
        Text query;
        OptionButton& option;
        TextArray& results;
        EntryRule rule;
    } cases[] = {
        {"现代汉语词典.txt", U"测", form1.Option1, test.module1().cnhits, {U"。\r\n", 10, 10, 12}},
        {"牛津字典A.TXT", U"aB", form1.Option2, test.module1().enhits, {U".\r\n", 35, 32, 36}},
        {"牛津字典hY.TXT", U"测", form1.Option2, test.module1().zhhits, {U".\r\n", 249, 250, 250}},
    };
    for (int round = 0; round < 120; ++round)
        for (const auto& one : cases) {
            Text text = random_text(
                random, {U"ab", U"Ab", U"测", U"测试", U"  ", U"xxxxxxxxxx", U"。\r\n", U".\r\n", U"?\r\n", U"!\r\n"},
                700);
            if (round % 20 == 0)
                text += one.rule.entry_end + one.query + Text(9990 + random() % 12, U'x') + one.rule.entry_end;
            test.installation.write(one.file, to_utf8(U"\ufeff" + TextView(text)));
            form1.Option1.set_value(false);
            form1.Option2.set_value(false);
            one.option.set_value(true);
            form1.resultpos = 0;
            const Text compared = one.rule.window == 35 ? lower(text) : text;
            const Pieces expected = entries(compared, text, lower(one.query), one.rule);
            run({}, one.query, round % 2 == 0);
            if (one.rule.window == 249 && (expected.stored.empty() || expected.stored.front().empty())) {
                ASSERT_EQ(form1.resultpos, 2); // looked twice, the second time in the empty pane
                ASSERT_EQ(form1.resultcount, 0);
                continue;
            }
            expect_same(one.results, expected, text, one.query);
        }
}

TEST_F(Query, more_results_than_the_array_holds_keep_those_found)
{
    form1.number_box().set_text(U"。");
    Text text;
    for (int i = 0; i < 1'000'002; ++i) text += U"。a";
    run(text + U"。", U"a", false);
    EXPECT_THAT(test.dialogs.take_messages().back(), ::testing::HasSubstr("只保留已经查到的结果"));
    EXPECT_EQ(form1.resultcount, 1'000'001);
    EXPECT_EQ(test.module1().hits.get(1'000'000), U"a。a。");
}

} // namespace
} // namespace tarvik::test
