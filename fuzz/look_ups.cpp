#include "fuzz/queries.h"

/// Look-ups in each kind of dictionary file equal a slow search of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    using namespace tarvik::fuzz;
    struct Kind {
        const char* file;
        Text query;
        OptionButton Form1::*option;
        TextArray Module1::*results;
        test::EntryRule rule;
    };
    static const Kind kinds[] = {
        {"现代汉语词典.txt", U"测", &Form1::Option1, &Module1::cnhits, {U"。\r\n", 10, 10, 12}},
        {"牛津字典A.TXT", U"aB", &Form1::Option2, &Module1::enhits, {U".\r\n", 35, 32, 36}},
        {"牛津字典hY.TXT", U"测", &Form1::Option2, &Module1::zhhits, {U".\r\n", 249, 250, 250}},
    };
    Choices choices(bytes_of_input(data, size));
    const Kind& kind = kinds[choices.below(std::size(kinds))];
    const bool by_enter = choices.below(2) == 1;
    Text text = chosen_text(choices,
                            {U"ab", U"Ab", U"测", U"测试", U"  ", U"xxxxxxxxxx", U"。\r\n", U".\r\n", U"?\r\n",
                             U"!\r\n", kind.query, Text(240, U'x'), Text(9'980, U'x')},
                            250);
    text.resize(std::min<std::size_t>(text.size(), 25'000));
    static test::TestProgram started;
    Form1& form1 = started.form1();
    started.installation.write(kind.file, to_utf8(U"\ufeff" + text));
    form1.Option1.set_value(false);
    form1.Option2.set_value(false);
    (form1.*kind.option).set_value(true);
    form1.resultpos = 0;
    const Text compared = kind.rule.window == 35 ? lower(text) : text;
    const test::Pieces expected = test::entries(compared, text, lower(kind.query), kind.rule);
    run_query(started, {}, kind.query, by_enter);
    if (kind.rule.window == 249 && (expected.stored.empty() || expected.stored.front().empty())) {
        require(form1.resultcount == 0, "nothing, after the second look in the empty pane");
        return 0;
    }
    require_same(form1, started.module1().*kind.results, expected);
    return 0;
}
