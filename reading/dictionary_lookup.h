#pragma once

#include "platform/text/code_page.h"
#include "reading/queries.h"

#include <array>

namespace tarvik {

/// A dictionary's file, how its entries are told apart, and what its lookups fill. There is no index: a match is at the
/// head of an entry when the end of the entry before it stands in the window of characters right before the match.
struct Dictionary {
    std::u32string_view file; ///< empty for a dictionary with a file for each letter
    std::u32string_view entry_end;
    std::size_t window;
    std::size_t start_offset;   ///< an entry begins so many characters before its match, less the entry end's position
    std::size_t first_position; ///< matches at positions below this, counted from 1, are not taken
    bool letters_alike;         ///< the file is compared in lower case; the query always is
    TextArray Module1::*results;
    Colour colour;
};

inline constexpr Dictionary chinese_dictionary{U"现代汉语词典.txt", U"。\r\n",           10, 10, 12, false,
                                               &Module1::cnhits,    chinese_match_colour};
inline constexpr Dictionary english_letter_dictionary{
    {}, U".\r\n", 35, 32, 36, true, &Module1::enhits, english_match_colour};
inline constexpr Dictionary english_other_dictionary{
    U"牛津字典hY.TXT", U".\r\n", 249, 250, 250, false, &Module1::zhhits, english_match_colour};

/// Lines with these ends count as the end of an entry, too.
inline constexpr std::array<std::u32string_view, 2> other_entry_ends{U"?\r\n", U"!\r\n"};

/// An entry has to end within so many characters from its head word.
inline constexpr std::size_t longest_entry = 10'000;

/// The English dictionary that a word with this first character, in lower case, is looked up in.
inline const Dictionary& english_dictionary(char32_t first)
{
    return char_code(first) < ')' ? english_other_dictionary : english_letter_dictionary;
}
/// The dictionary's file for such a word; nothing if it has none.
std::optional<Text> dictionary_file(const Dictionary& dictionary, char32_t first);

/// The dictionary that serves the query: the Chinese one, or one of the English ones, whichever is selected.
const Dictionary& dictionary_for(const Program& program);

/// Looks the query up in the dictionary that serves it. Gives whether it ran to its end.
bool look_up(Program& program, const QueryEntry& entry);

/// Reads the dictionary's file for the query into the result pane, if there is one for it, and finds its entries there.
/// Gives false when the file is missing, which is reported under the title.
bool find_entries(Program& program, const Dictionary& dictionary, TextView title);

} // namespace tarvik
