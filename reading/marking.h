#pragma once

#include "mainwindow/mainwindow.h"

#include <vector>

namespace tarvik {

/// The colours in which matches are shown, one for each kind of result.
inline constexpr Colour page_match_colour = 44564;
inline constexpr Colour query_match_colour = 44390;
inline constexpr Colour chinese_match_colour = 173;
inline constexpr Colour english_match_colour = 11363942;

inline constexpr int match_font_size = 32;

/// The matches that are marked in a text.
struct MatchPlaces {
    std::vector<Position> marked;
    std::size_t last_found = 0; ///< position where the last look for a match found one, counted from 1; 0 if it did not
};

/// A match at the first character is not marked, and neither is one that begins directly behind a marked one. Linear in
/// the text.
MatchPlaces places_to_mark(TextView text, TextView needle);

enum class LetterCase { Alike, Apart };

/// Marks the matches of `needle` in the result pane, with capitals and small letters alike or apart, and leaves the
/// last one selected. An empty pane stays as it is. Gives the places that were marked.
std::vector<Position> mark_needle(Program& program, Colour colour, LetterCase letter_case);

/// Takes the query box, without leading blanks and in lower case, as the needle and marks it, letters alike.
void mark_query(Program& program, Colour colour);

} // namespace tarvik
