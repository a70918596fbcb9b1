#include "engines/spreadsheets/cell_texts.h"

#include <gtest/gtest.h>

namespace tarvik::ooxml {

TEST(CellText, is_written_so_that_readers_get_it_back)
{
    struct Case {
        std::u32string_view text;
        std::string raw;
        std::u32string_view read; ///< when it is not the text itself
    };
    const Case cases[] = {
        {U"a<b>&\"c\"", "a&lt;b&gt;&amp;\"c\"", {}},
        {U"一\r\n二\n三\t", "一\n二\n三\t", U"一\n二\n三\t"},
        {U"\r甲\r", "_x000D_甲_x000D_", {}},
        {U"\x0B_\x01_", "_x000B___x0001__", {}},
        {U"_x0041_x0042_", "_x005F_x0041_x005F_x0042_", {}},
        {U"_x00g1_ _x004 _X0041_", "_x00g1_ _x004 _X0041_", {}},
        {U"_x0041\x01_x0041\x0B_", "_x005F_x0041_x0001__x005F_x0041_x000B__", {}},
        {U"\uFFFF", "_xFFFF_", {}},
        {U"😀𠮷", "😀𠮷", {}},
        {U"_xD83D__xDE00_", "_x005F_xD83D__x005F_xDE00_", {}},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(encode_cell_text(one.text), one.raw);
        const auto written = one.raw.find('&') == std::string::npos ? one.raw : to_utf8(one.text);
        EXPECT_EQ(to_utf8(decode_cell_text(written)), to_utf8(one.read.empty() ? one.text : one.read));
    }
    EXPECT_EQ(encode_cell_text(Text{0xD800, U'a', 0xDFFF, 0x110000}), "\uFFFDa\uFFFD\uFFFD");
}

TEST(CellText, ends_at_the_longest_text_of_a_cell)
{
    EXPECT_EQ(encode_cell_text(Text(32'767, U'文')).size(), 3U * 32'767);
    EXPECT_EQ(encode_cell_text(Text(40'000, U'文')).size(), 3U * 32'767);
    // A character outside of the basic plane is two units and is not cut through.
    EXPECT_EQ(encode_cell_text(U"a" + Text(20'000, U'😀')).size(), 1U + 4U * 16'383);
    EXPECT_EQ(encode_cell_text(Text(20'000, U'😀')).size(), 4U * 16'383);
    std::u32string lines;
    for (int i = 0; i < 20'000; ++i) lines += U"a\r\n";
    EXPECT_EQ(encode_cell_text(lines).size(), 32'767U); // a line break is one unit
}

} // namespace tarvik::ooxml
