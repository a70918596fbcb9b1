#include "mainwindow/clipboard_events.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

using test::TestProgram;

TEST(Clipboard, a_release_copies_the_selection_also_nothing)
{
    TestProgram started;
    Pane& pane = started.form1().RichTextBox2;
    pane.set_text(U"返修单 4900");
    pane.select({Position(5), 4});
    RichTextBox_MouseUp(started.program, pane);
    EXPECT_EQ(started.clipboard.text(), U"4900");
    pane.select({Position(3), 0});
    RichTextBox_MouseUp(started.program, pane);
    EXPECT_TRUE(started.clipboard.text().empty());
}

class ThreeLines final : public LineSource {
public:
    std::size_t line_count() const override { return 3; }
    void append_line(std::size_t index, Text& target) const override { target += U"line " + number_text(index); }
};

TEST(Clipboard, a_copy_out_of_lines_and_edits_is_what_was_selected_whatever_becomes_of_the_pane)
{
    TestProgram started;
    Pane& pane = started.form1().RichTextBox3;
    pane.set_content(PaneText(std::make_shared<ThreeLines>()));
    pane.append(U"behind them");
    const Text whole = U"line 0\r\nline 1\r\nline 2\r\nbehind them";
    for (std::size_t start = 1; start <= whole.size(); ++start)
        for (const std::size_t length : {1U, 9U, 12U, 99U}) {
            pane.select({Position(start), length});
            const TextSource source = pane.selected_source();
            Text copied;
            source([&copied](TextView part) { copied += part.str(); });
            ASSERT_EQ(to_utf8(copied), to_utf8(mid(whole, start, length).str())) << start << ' ' << length;
        }
    pane.select({Position(8), 3});
    const TextSource source = pane.selected_source();
    pane.set_text(U"gone");
    RichTextBox_MouseUp(started.program, pane);
    started.clipboard.set_source(source);
    EXPECT_EQ(started.clipboard.text(), U"\nli");
}

TEST(Clipboard, the_menu_acts_where_the_focus_is_and_a_paste_can_be_done_once)
{
    TestProgram started;
    Form1& form1 = started.form1();
    focus_changed(started.program, form1.RichTextBox3, true);
    form1.RichTextBox3.set_text(U"abcdef");
    form1.RichTextBox3.select({Position(2), 3});
    menu_Click(started.program, MenuEntry::copy1);
    EXPECT_EQ(started.clipboard.text(), U"bcd");
    form1.RichTextBox3.select({Position(6), 1});
    menu_Click(started.program, MenuEntry::paste1);
    EXPECT_EQ(form1.RichTextBox3.text(), TextView(U"abcdebcd"));
    form1.RichTextBox3.select({Position(1), 4});
    menu_Click(started.program, MenuEntry::paste1);
    EXPECT_EQ(form1.RichTextBox3.text(), TextView(U"ebcd")) << "the clipboard is empty by then";
    menu_Click(started.program, MenuEntry::nothing);
    EXPECT_EQ(form1.RichTextBox3.text(), TextView(U"ebcd"));
}

TEST(Clipboard, a_right_button_on_a_box_pastes_at_the_next_release_only)
{
    TestProgram started;
    Form1& form1 = started.form1();
    started.clipboard.set_text(U"An docket");
    form1.query_box().select({Position(1), 4});
    Text1_MouseUp(started.program, 1);
    EXPECT_EQ(form1.query_box().text(), U"查寻条件");
    Text1_MouseDown(started.program, 1, MouseButton::Right);
    EXPECT_EQ(started.screen.menus, 1);
    EXPECT_TRUE(form1.menuonquery);
    Text1_MouseUp(started.program, 1);
    EXPECT_EQ(form1.query_box().text(), U"An docket");
    EXPECT_FALSE(form1.menuonquery);
    Text1_MouseDown(started.program, 4, MouseButton::Right);
    EXPECT_EQ(started.screen.menus, 1) << "the page box has no menu";
}

TEST(Panes, enlarging_holds_until_the_text_is_replaced)
{
    TestProgram started;
    Pane& pane = started.form1().RichTextBox1;
    pane.set_text(U"长文");
    pane.set_marks({{Position(2), 1, 173, 32}});
    RichTextBox_MouseDown(started.program, pane, MouseButton::Middle, false);
    EXPECT_EQ(pane.text_font_size(), 0);
    RichTextBox_MouseDown(started.program, pane, MouseButton::Middle, true);
    EXPECT_EQ(pane.selection(), (Selection{Position(1), 2}));
    EXPECT_EQ(pane.text_font_size(), 28);
    EXPECT_EQ(pane.marks(), (std::vector<Mark>{{Position(2), 1, 173, 28}}));
    pane.set_text(U"下一页");
    EXPECT_EQ(pane.text_font_size(), 0);
}

TEST(SmallEvents, a_changed_query_forgets_results_but_not_those_of_the_plain_query)
{
    TestProgram started;
    Form1& form1 = started.form1();
    form1.resultcount = 1;
    form1.resultpos = 1;
    form1.cutopenfile = true;
    Module1& arrays = started.module1();
    TextArray* const forgotten[] = {&arrays.enhits, &arrays.zhhits, &arrays.cnhits, &arrays.filehits};
    for (TextArray* results : forgotten) results->set(1, U"entry");
    started.module1().hits.set(1, U"piece");
    Text1_Change(started.program, 2);
    EXPECT_EQ(form1.resultpos, 1);
    Text1_Change(started.program, 1);
    EXPECT_EQ(form1.resultpos, 0);
    EXPECT_FALSE(form1.cutopenfile);
    for (TextArray* results : forgotten) EXPECT_TRUE(results->get(1).empty());
    EXPECT_EQ(started.module1().hits.get(1), TextView(U"piece"));
}

TEST(TextBox, keeps_the_caret_when_it_is_given_what_it_holds)
{
    TestProgram started;
    TextBox& box = started.form1().number_box();
    box.set_text(U"12");
    box.select({Position(2), 1});
    int changes = 0;
    started.program.listeners.text_changed = [&](const auto&) { ++changes; };
    box.set_text(U"12");
    EXPECT_EQ(box.selection(), (Selection{Position(2), 1}));
    EXPECT_EQ(changes, 0);
}

TEST(Helpers, smallest_that_is_not_0)
{
    EXPECT_EQ(min3to1(0, 7, 3), 3);
    EXPECT_EQ(min3to1(0, 0, 5), 5);
    EXPECT_EQ(min3to1(0, 1, 5), 1);
    EXPECT_EQ(min3to1(0, 0, 0), 0);
    EXPECT_EQ(min2to1(4, 4), 4);
    EXPECT_EQ(ccnn(U""), 0);
    EXPECT_EQ(ccnn(U"12.5"), 12.5);
    EXPECT_THROW(ccnn(U"十二"), Failure);
}

} // namespace
} // namespace tarvik
