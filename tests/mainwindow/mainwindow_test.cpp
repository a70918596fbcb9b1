#include "mainwindow/pane_text.h"
#include "mainwindow/table.h"
#include "platform/text/document.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik {
namespace {

TEST(TextArray, elements_outlive_the_buffers_they_were_cut_from)
{
    TextArray array(1'000'000);
    for (std::size_t i = 0; i < 3000; ++i) {
        const SharedBuffer buffer = make_buffer(U"text " + number_text(i));
        array.set(i % 700, buffer->view().substr(5), buffer);
    }
    // 3000 = 4 * 700 + 200: the first 200 elements were written once more than the rest.
    EXPECT_EQ(array.get(199), TextView(U"2999"));
    EXPECT_EQ(array.get(200), TextView(U"2300"));
    EXPECT_TRUE(array.get(900'000).empty());
    EXPECT_THROW(array.set(1'000'001, U"x"), Failure);
    array.clear(0, 199);
    EXPECT_TRUE(array.get(199).empty());
    EXPECT_EQ(array.get(200), TextView(U"2300"));
}

TEST(RowTexts, an_emptied_row_is_not_the_closing_row)
{
    RowTexts rows(300'000);
    const SharedBuffer buffer = make_buffer(U"a\tb");
    rows.set_line(0, buffer->view(), buffer);
    rows.set_line(1, {}, nullptr);
    EXPECT_EQ(rows.text(0), U"\ta\tb\t");
    EXPECT_EQ(rows.text(1), U"\t\t");
    EXPECT_FALSE(rows.is_empty(1));
    rows.clear(1, 1);
    EXPECT_TRUE(rows.is_empty(1));
    EXPECT_EQ(rows.text(1), U"");
    rows.swap(0, 1);
    EXPECT_EQ(rows.text(1), U"\ta\tb\t");
}

class Numbers final : public LineSource {
public:
    std::size_t line_count() const override { return 120; }
    void append_line(std::size_t index, Text& target) const override { target += number_text(index); }
};

TEST(Documents, are_decoded_again_when_their_file_has_changed)
{
    test::TestProgram started;
    for (const char* bytes : {"one", "two", "six"}) {
        started.installation.write("a.txt", bytes);
        EXPECT_EQ(load_document(started.program, U"a.txt").text(), from_utf8(bytes)) << "of the same size, at once";
    }
}

TEST(PaneText, edits_slices_and_parts_are_those_of_a_plain_string)
{
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        Text plain = round % 2 == 0 ? U"第一行\r\nsecond" : Text();
        for (int line = 0; round % 2 == 1 && line < 120; ++line) plain += number_text(line) + U"\r\n";
        PaneText text = round % 2 == 0 ? PaneText(TextView(plain)) : PaneText(std::make_shared<Numbers>());
        for (int edit = 0; edit < 12; ++edit) {
            const Position start(1 + random() % (plain.size() + 3));
            const std::size_t length = random() % 9;
            const TextView wanted = mid(plain, start.number(), length);
            ASSERT_EQ(text.size(), plain.size());
            ASSERT_EQ(text.slice(start, length).view, wanted);
            Text handed;
            text.for_each_part([&handed](TextView part) { part.append_to(handed); }, start, length);
            ASSERT_EQ(handed, wanted.str());
            const Text inserted(random() % 4, std::u32string_view(U"aé中\U00020000")[random() % 4]); // of every width
            if (random() % 3 == 0) {
                text.append(inserted);
                plain += inserted;
            } else {
                text.replace(start, length, inserted);
                const std::size_t at = std::min(start.offset(), plain.size());
                plain.replace(at, std::min(length, plain.size() - at), inserted);
            }
            ASSERT_EQ(text.empty(), plain.empty());
            if (random() % 2 == 0) continue; // what follows gathers the text
            ASSERT_EQ(text.view(), TextView(plain));
        }
    }
}

TEST(Pane, what_was_selected_stays_whatever_becomes_of_it)
{
    test::TestProgram started;
    Pane& pane = started.form1().RichTextBox3;
    pane.set_content(PaneText(std::make_shared<Numbers>()));
    pane.append(U"behind them");
    pane.select({Position::at_offset(pane.content().size() - 12), 99});
    const TextSource source = pane.selected_source();
    pane.set_text(U"gone");
    started.clipboard.set_source(source);
    EXPECT_EQ(started.clipboard.text(), U"\nbehind them");
}

TEST(Startup, keeps_which_objects_of_its_file_accesses_stand)
{
    test::TestProgram started;
    EXPECT_TRUE(started.form1().fso) << "the folder of results was made";
    EXPECT_FALSE(started.form1().textstream) << "there is no opening screen that could be read";
    started.installation.write("coclus.txt", "Tarvik");
    Form_Load(started.program);
    EXPECT_TRUE(started.form1().textstream);
}

// The reference goes step by step.
double grown_width(double screen, double factor)
{
    double width = 0;
    for (double w = 0; w <= screen * 0.5; ++w) {
        width = w;
        if (w - 732 - 200 - 960 - 200 > 10000 * factor) break;
    }
    return width;
}

TEST(Startup, opening_grows_the_window_as_far_as_the_step_by_step_rule)
{
    for (const double screen : {0.0, 3000.0, 9000.0, 15360.0, 17000.0, 17001.0, 20480.0, 28800.0, 57600.0}) {
        test::TestProgram started;
        Form1& form1 = started.form1();
        const double base = screen > 17000 ? 12960 : 8848;
        const double factor = screen > 17000 ? 1.1 : 0.82;
        const double before = form1.Command6.left();
        opening_animation(started.program, screen);
        const double k = factor * grown_width(screen, factor) / base;
        EXPECT_DOUBLE_EQ(form1.Command6.left(), before * k) << screen;
        EXPECT_DOUBLE_EQ(form1.window.width(), form1.Command6.left() + form1.Command6.width() + 200) << screen;
        EXPECT_DOUBLE_EQ(form1.Command2[5].left(), form1.Command2[4].left());
    }
}

TEST(Numbers, smallest_of_three_that_is_not_0)
{
    EXPECT_EQ(min3to1(0, 7, 3), 3);
    EXPECT_EQ(min3to1(0, 0, 5), 5);
    EXPECT_EQ(min3to1(0, 0, 0), 0);
}

} // namespace
} // namespace tarvik
