#pragma once

#include "columns/columns.h"
#include "platform/text/code_page.h"
#include "tests/columns/slow_engine.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace tarvik::test {

/// Keys over small documents, all of them by chance: after every key the engine must hold, show and have written
/// exactly what a slow engine does, what earlier keys left behind included.
class Session {
public:
    /// `pick` gives a number below the one that it is given.
    explicit Session(std::function<std::size_t(std::size_t below)> pick) : pick_(std::move(pick))
    {
        box(0, 2);
        plain_.box = form1_.number_box().text();
    }

    /// One key on both sides; gives what it was.
    std::string step();
    void compare(const std::string& step);

private:
    std::size_t pick(std::size_t below) { return pick_(below); }
    template <std::size_t Size>
    Text one_of(const char32_t* const (&texts)[Size])
    {
        return texts[pick(Size)];
    }
    void box(int index, std::size_t value) { program_.form3.Text1[index].set_text(number_text(value)); }
    Text random_document();
    Text random_table();
    void query(const Text& document, const Text& needle)
    {
        test_.open_text(document);
        form1_.query_box().set_text(needle);
        Command7_Click(program_, 0);
        plain_.query(document, needle);
    }
    void split()
    {
        Command8_Click(program_, 0);
        plain_.split();
    }
    void flag(char32_t key)
    {
        bool eaten = false;
        const std::size_t sufcol = 1 + pick(3);
        if (key == U'c') {
            box(3, sufcol);
            box(4, plain_.sugcol = 1 + pick(3));
        }
        column_keys(program_, key, eaten);
        if (!form1_.dbresult) return;
        if (key == U'c') plain_.sufcol = sufcol;
        if (key == U'c' || key == U'e') plain_.comp = key == U'c';
        if (key == U';' || key == U':') plain_.notcap = key == U';';
        if (key == U',' || key == U'.') plain_.showdata = key == U',';
    }
    void two_tables()
    {
        for (const char32_t key : {U'e', U'c'}) {
            flag(key);
            query(random_table(), U"|");
            split();
        }
    }
    void p();

    std::function<std::size_t(std::size_t below)> pick_;
    TestProgram test_;
    Program& program_ = test_.program;
    Form1& form1_ = program_.form1;
    SlowEngine plain_;
};

inline Text Session::random_document()
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
    for (std::size_t field = pick(40) == 0 ? 120 : 0; field > 0; --field) text += U"\ta";
    return text;
}

/// Lines of few different fields, so that two tables have much in common.
inline Text Session::random_table()
{
    static const char32_t* const fields[] = {U"a", U"a", U"b", U"甲", U"", U" ab"};
    static const char32_t* const dates[] = {U"2020-01-05", U"20200120", U"2020.2.5 12:00",
                                            U"2020/02/30", U"",         U"20-1-5"};
    Text text;
    const bool mixed = pick(3) == 0; // the check of dates ends with the first that is none
    for (std::size_t rows = pick(9); rows > 0; --rows, text += U"|\r\n") {
        text += one_of(fields) + U"\t";
        text += (mixed && pick(2) == 0 ? one_of(fields) : dates[pick(pick(12) == 0 ? 6 : 5)]) + U"\t";
        text += (mixed && pick(2) == 0 ? one_of(fields) : dates[pick(5)]) + U"\t";
    }
    return text;
}

inline void Session::p()
{
    const bool yes = pick(2) == 0, equal = pick(2) == 0, comp = plain_.comp;
    plain_.dateto = yes ? 2 + pick(2) : 1 + pick(3);     // a column, or a place in the field
    plain_.days = 10 + 5 * static_cast<double>(pick(2)); // the dates of the tables lie 15 days apart, or more
    box(1, plain_.dateto);
    box(2, static_cast<std::size_t>(plain_.days));
    if (pick(2) == 0) form1_.query_box().set_text(U"aB");
    test_.dialogs.replies = {yes ? Answer::Yes : Answer::No, equal ? Answer::Yes : Answer::No};
    Command9_Click(program_, 5);
    plain_.begin_comparison();
    if (!comp && yes) plain_.check_dates();
    else if (!comp)
        plain_.query_field(form1_.query_box().text(), 2, plain_.dateto, static_cast<std::size_t>(plain_.days));
    else if (plain_.sufrows < plain_.sugrows) plain_.reset();
    else if (yes) plain_.cross();
    else if (!plain_.notcap) plain_.parallel(equal);
    else plain_.notcap = false, plain_.reset();
    if (comp && yes) flag(U':'); // so that rows which a comparison has emptied are compared again
}

inline std::string Session::step()
{
    static const char32_t* const needles[] = {U"a", U"ab", U"aa", U"  Ab", U"甲",   U"\t", U"ｂ",
                                              U"2", U"\r", U" ",  U"x",    U"乙丙", U""};
    const std::size_t column = pick(5);
    box(5, column);
    const char32_t key = U"\x1b\x1b\x1bqq2z/sppcceeppp;:,."[pick(21)];
    if (key == 27) {
        const Text document = random_document();
        query(document, one_of(needles));
    } else if (key == U'q') {
        split();
    } else if (key == U'2') {
        two_tables();
    } else if (key == U'z') {
        Command9_Click(program_, 1);
        plain_.sort(column);
    } else if (key == U'/') {
        Command9_Click(program_, 2);
        plain_.statistics(column, false);
    } else if (key == U's') {
        statistitt(program_, static_cast<int>(column));
        if (form1_.dbresult) plain_.statistics(column, true);
    } else if (key == U'p') {
        p();
    } else {
        flag(key);
    }
    return {static_cast<char>(key)};
}

inline void Session::compare(const std::string& step)
{
    SCOPED_TRACE(step);
    const Module1& arrays = program_.module1;
    ASSERT_EQ(to_utf8(form1_.RichTextBox3.text()), to_utf8(plain_.pane));
    ASSERT_EQ(form1_.number_box().text(), plain_.box);
    for (const auto& [name, text] : plain_.files) ASSERT_EQ(test_.installation.read(name), encode(text)) << name;
    const auto values = [](const auto& side) {
        return std::array{double(side.sufcount),    double(side.sugcount),  double(side.curcount),
                          double(side.sufrows),     double(side.sugrows),   double(side.keycount),
                          double(side.resultcount), double(side.compcount), double(side.daydiff),
                          double(side.comp),        double(side.notcap),    double(side.showdata)};
    };
    ASSERT_EQ(values(form1_), values(plain_));
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

} // namespace tarvik::test
