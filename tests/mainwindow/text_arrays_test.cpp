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

} // namespace
} // namespace tarvik
