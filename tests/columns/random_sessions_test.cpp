#include "columns/keys.h"
#include "columns/statistics.h"
#include "platform/code_page.h"
#include "tests/columns/plain_loops.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <random>

/// Random sessions of keys over small random documents: after every key the engine must hold, show and have written
/// exactly what the plain loops do, what earlier keys left behind included.
namespace tarvik::test {
namespace {

class Session {
public:
    explicit Session(unsigned seed) : random_(seed)
    {
        Form3& form3 = program_.program.form3;
        form3.Text1[0].set_text(U"2");
        plain_.box = program_.form1().Text1[2].text();
    }

    /// One key on both sides; gives what it was.
    std::string step();
    void compare(const std::string& step);

private:
    std::size_t pick(std::size_t below) { return random_() % below; }
    template <std::size_t Size>
    Text one_of(const char32_t* const (&texts)[Size])
    {
        return texts[pick(Size)];
    }
    Text random_document();
    Text random_table();
    void query(const Text& document, const Text& needle);
    void query();
    void split();
    void two_tables();
    void press(char32_t key);
    void compare_tables();
    void comparison();
    void inside_suf();

    std::mt19937 random_;
    TestProgram program_;
    PlainLoops plain_;
};

Text Session::random_document()
{
    static const char32_t* const pieces[] = {
        U"a",     U"b",   U"ab", U"A",  U"aa",         U"甲",       U"乙丙",           U"Ｂ",         U"12",
        U"9",     U"abc", U" ",  U"\t", U"\t",         U"\t\t",     U"\r\n",           U"\r\n",       U"\r",
        U"\r\n",  U"\n",  U"|",  U"\t", U"2020-01-05", U"20200120", U"2020.1.5 12:00", U"2021/02/29", U"2020-02-01",
        U"\tab\t"};
    Text text;
    for (std::size_t count = pick(60); count > 0; --count) text += one_of(pieces);
    if (pick(6) == 0) text.insert(pick(text.size() + 1), Text(19 + pick(8), U'\t'));
    if (pick(6) == 0) text.insert(pick(text.size() + 1), Text(716 + pick(7), U'x'));
    if (pick(40) == 0)
        for (int field = 0; field < 120; ++field) text += U"\ta";
    return text;
}

/// Lines of few different fields, so that two tables have much in common.
Text Session::random_table()
{
    static const char32_t* const fields[] = {U"a", U"a", U"b", U"甲", U"", U"ab"};
    static const char32_t* const dates[] = {U"2020-01-05", U"20200120", U"2020.2.5 12:00",
                                            U"2020/02/30", U"",         U"20-1-5"};
    Text text;
    for (std::size_t rows = pick(9); rows > 0; --rows) {
        text += one_of(fields) + U"\t";
        for (int i = 0; i < 2; ++i)
            text += (pick(3) == 0 ? one_of(fields) : dates[pick(pick(12) == 0 ? 6 : 5)]) + U"\t";
        text += U"|\r\n";
    }
    return text;
}

void Session::query(const Text& document, const Text& needle)
{
    program_.open_text(document);
    program_.form1().Text1[1].set_text(needle);
    Command7_Click(program_.program, 0);
    plain_.query(document, needle);
}

void Session::query()
{
    static const char32_t* const needles[] = {U"a", U"ab", U"aa", U"  Ab", U"甲",   U"\t", U"ｂ",
                                              U"2", U"\r", U" ",  U"x",    U"乙丙", U""};
    const Text document = random_document();
    query(document, one_of(needles));
}

void Session::split()
{
    Command8_Click(program_.program, 0);
    plain_.split();
}

void Session::two_tables()
{
    press(U'e');
    query(random_table(), U"|");
    split();
    press(U'c');
    query(random_table(), U"|");
    split();
}

void Session::press(char32_t key)
{
    bool eaten = false;
    column_keys(program_.program, key, eaten);
    if (!program_.form1().dbresult) return;
    if (key == U'c' || key == U'e') plain_.comp = key == U'c';
    if (key == U';' || key == U':') plain_.notcap = key == U';';
    if (key == U',' || key == U'.') plain_.showdata = key == U',';
}

void Session::inside_suf()
{
    const bool dates = pick(2) == 0;
    plain_.dateto = 2 + pick(2);
    program_.program.form3.Text1[1].set_text(number_text(static_cast<double>(plain_.dateto)));
    program_.dialogs.replies = {dates ? Answer::Yes : Answer::No};
    Command9_Click(program_.program, 0);
    plain_.begin_comparison();
    if (dates) plain_.check_dates();
    else plain_.query_field(program_.form1().Text1[1].text(), 2, plain_.dateto, 10);
}

void Session::comparison()
{
    const bool cross = pick(2) == 0, equal = pick(2) == 0;
    program_.dialogs.replies = {cross ? Answer::Yes : Answer::No, equal ? Answer::Yes : Answer::No};
    Command9_Click(program_.program, 5);
    plain_.begin_comparison();
    if (plain_.sufrows < plain_.sugrows || (!cross && plain_.notcap)) {
        if (plain_.sufrows >= plain_.sugrows) plain_.notcap = false;
        plain_.comp = false;
        plain_.reset();
    } else if (cross) {
        plain_.cross();
    } else {
        plain_.parallel(equal);
    }
}

std::string Session::step()
{
    const std::size_t column = pick(5);
    program_.program.form3.Text1[5].set_text(number_text(static_cast<double>(column)));
    switch (pick(14)) {
    case 0:
    case 1:
    case 2: query(); return "Esc";
    case 3:
    case 4: split(); return "q";
    case 5: two_tables(); return "two tables";
    case 6:
        Command9_Click(program_.program, 1);
        plain_.sort(column);
        return "z";
    case 7:
        Command9_Click(program_.program, 2);
        plain_.statistics(column, false);
        return "/";
    case 8:
        statistitt(program_.program, static_cast<int>(column));
        if (program_.form1().dbresult) plain_.statistics(column, true);
        return "statistitt";
    case 9:
    case 10:
    case 11:
        if (plain_.comp) comparison();
        else inside_suf();
        return "p";
    default: {
        const char32_t key = U"ccee;:,,."[pick(9)];
        press(key);
        return {static_cast<char>(key)};
    }
    }
}

void Session::compare_tables()
{
    const Module1& arrays = program_.module1();
    for (std::size_t row = 0; row < 16; ++row) {
        ASSERT_EQ(arrays.sufrow.text(row), plain_.sufrow(row)) << row;
        ASSERT_EQ(arrays.sugrow.text(row), plain_.sugrow(row)) << row;
        ASSERT_EQ(arrays.rowhits.get(row).str(), plain_.rowhits(row)) << row;
        ASSERT_EQ(arrays.distinct.get(row).str(), plain_.distinct(row)) << row;
        ASSERT_EQ(arrays.distinctn.get(row).str(), plain_.distinctn(row)) << row;
        ASSERT_EQ(arrays.keylist.get(row).str(), plain_.keylist(row)) << row;
        ASSERT_TRUE(arrays.colcopy.get(row).empty());
        for (std::size_t column : {0U, 1U, 2U, 3U, 4U, 98U, 99U, 100U}) {
            ASSERT_EQ(arrays.suf.cell(row, column).str(), plain_.suf(row)(column)) << row << "," << column;
            ASSERT_EQ(arrays.sug.cell(row, column).str(), plain_.sug(row)(column)) << row << "," << column;
        }
    }
}

void Session::compare(const std::string& step)
{
    SCOPED_TRACE(step);
    const Form1& form1 = program_.form1();
    ASSERT_EQ(to_utf8(form1.RichTextBox3.text()), to_utf8(plain_.pane));
    ASSERT_EQ(form1.Text1[2].text(), plain_.box);
    for (const auto& [name, text] : plain_.files) ASSERT_EQ(program_.installation.read(name), encode(text)) << name;
    const auto count = [](std::size_t value) { return static_cast<double>(value); };
    ASSERT_EQ(std::make_tuple(form1.sufcount, form1.sugcount, form1.curcount, form1.sufrows, form1.sugrows),
              std::make_tuple(count(plain_.sufcount), count(plain_.sugcount), count(plain_.curcount),
                              count(plain_.sufrows), count(plain_.sugrows)));
    ASSERT_EQ(std::make_tuple(form1.resultcount, form1.compcount, form1.daydiff, form1.keycount),
              std::make_tuple(plain_.resultcount, plain_.compcount, plain_.daydiff, count(plain_.keycount)));
    ASSERT_EQ(std::make_tuple(form1.comp, form1.notcap, form1.showdata),
              std::make_tuple(plain_.comp, plain_.notcap, plain_.showdata));
    compare_tables();
}

TEST(ColumnEngine, equals_the_plain_loops_in_random_sessions)
{
    for (unsigned seed = 1; seed <= 100 && !testing::Test::HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Session session(seed);
        std::string keys;
        for (int i = 0; i < 60 && !testing::Test::HasFatalFailure(); ++i) {
            keys += session.step() + " ";
            session.compare(keys);
        }
    }
}

} // namespace
} // namespace tarvik::test
