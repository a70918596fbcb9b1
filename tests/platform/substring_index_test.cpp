#include "platform/text/substring_index.h"

#include "platform/text/document.h"

#include <gtest/gtest.h>

#include <random>

namespace tarvik {
namespace {

std::vector<std::size_t> places_by_search(TextView text, TextView needle)
{
    std::vector<std::size_t> places;
    for (std::size_t place = text.find(needle); place != npos; place = text.find(needle, place + 1))
        places.push_back(place);
    return places;
}

TEST(SubstringIndex, finds_every_place_that_a_search_finds)
{
    std::mt19937 random(11);
    for (const std::u32string_view letters : {U"ab", U"0123456789", U"中a𠀀\t"}) {
        const auto pick = [&] { return letters[random() % letters.size()]; };
        for (const std::size_t size : {0, 4, 5, 300, 5000}) {
            Text text;
            for (std::size_t i = 0; i < size; ++i) text += pick();
            const SharedBuffer narrow = make_buffer(text); // in one, two or four bytes a character
            const SubstringIndex index(narrow->view());
            for (int round = 0; round < 100; ++round) {
                Text needle;
                for (std::size_t i = 5 + random() % 6; i > 0; --i) needle += pick();
                if (size > 20 && round % 2 == 0) needle = text.substr(random() % (size - 15), 5 + random() % 10);
                EXPECT_EQ(index.places(narrow->view(), needle), places_by_search(text, needle));
            }
        }
    }
    EXPECT_FALSE(SubstringIndex(U"abcdef").serves(U"abcd"));
}

TEST(SubstringIndex, of_a_document_comes_with_many_scans_and_is_shared)
{
    const Document document(U"KEY-1\r\nkey-2\r\n");
    const Document copy = document; // NOLINT(performance-unnecessary-copy-initialization)
    for (int scan = 0; scan < 100; ++scan) document.note_keyed_scan();
    ASSERT_NE(copy.index(), nullptr);
    EXPECT_EQ(copy.index()->places(copy.lowered(), U"key-1"), std::vector<std::size_t>{0});
}

} // namespace
} // namespace tarvik
