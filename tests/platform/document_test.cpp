#include "platform/text/document.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

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

TEST(Document, none_and_empty_ones)
{
    const Document none, empty(U"");
    EXPECT_EQ(none.buffer(), nullptr);
    EXPECT_EQ(none.lowered(), U"");
    EXPECT_EQ(none.with_closing_line_end().text(), U"\r\n");
    EXPECT_TRUE(empty.text().has_storage());
    EXPECT_EQ(empty.with_closing_line_end().text(), U"\r\n");
    EXPECT_EQ(SharedText(U"中").str(), U"中");
}

} // namespace
} // namespace tarvik::test
