#include "fuzz/queries.h"

#include "reading/queries.h"

#include <algorithm>

/// Pieces between separators, sentences and marks equal the slow searches.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    using namespace tarvik::fuzz;
    Choices choices(bytes_of_input(data, size));
    const std::vector<Text> separators{U"。\r\n", U".\r\n", U";", U" ", U"; ", U"\r", U"aa", U".", U"。", U"数目"};
    const Text& separator = separators[choices.below(separators.size())];
    const bool by_enter = choices.below(2) == 1, by_sentence = choices.below(2) == 1;
    const Text query = chosen_text(choices, {U"a", U"A", U"b", U"测", U" ", U"\r\n"}, 3) + (by_sentence ? U"a" : U"");
    Text text = chosen_text(choices,
                            {U"a", U"A", U"b", U"测", U" ", U"\r\n", U"\r", U"\n", U"。\r\n", U"。 \r\n", U".\r\n",
                             U"!\r\n", U"。", U";", separator, Text(1980, U'x'), Text(19, U'x')},
                            120);
    // Some texts are longer than the windows that are searched; the slow searches take the square of the length.
    text.resize(std::min<std::size_t>(text.size(), choices.below(8) == 7 ? 9'000 : 2'500));
    if (query.empty()) return 0;

    std::size_t last_found = 0;
    const auto marked = test::places_marked(text, query, last_found);
    const std::vector<Position> places = places_to_mark(text, query).marked;
    require(std::equal(places.begin(), places.end(), marked.begin(), marked.end(),
                       [](Position place, std::size_t plain) { return place.number() == plain; }),
            "the marks");

    static test::TestProgram started;
    Form1& form1 = started.form1();
    form1.Option3.set_value(by_sentence);
    form1.number_box().set_text(separator);
    form1.cutopenfile = by_sentence && choices.below(3) == 0;
    form1.cutdistance = choices.below(30) + 1;
    const Text lowered = lower(text), needle = lower(TextView(ltrim(query)));
    if (!by_sentence && needle.empty()) return 0;
    const test::Pieces expected =
        by_sentence ? test::sentences(text, ltrim(query), by_enter, form1.cutopenfile, form1.cutdistance)
                    : test::pieces_between_separators(lowered, needle, separator);
    run_query(started, text, query, by_enter);
    require_same(form1, by_sentence ? started.module1().filehits : started.module1().hits, expected);
    if (by_sentence) require(form1.cutopenfile == expected.open, "whether a sentence is open");
    return 0;
}
