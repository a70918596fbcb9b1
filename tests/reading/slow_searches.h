#pragma once

#include "platform/text/text.h"

#include <random>
#include <vector>

/// The searches written position by position, so simply that they can be read: whatever the fast ones give must equal
/// it.
namespace tarvik::test {

struct Pieces {
    std::vector<Text> stored; ///< by index; an index that was passed over holds nothing
    double count = 0;
    bool open = false; ///< a piece has found its start and not its end
    friend bool operator==(const Pieces&, const Pieces&) = default;
};

std::vector<std::size_t> places_marked(TextView text, TextView needle, std::size_t& last_found);
Pieces pieces_between_separators(TextView text, TextView query, TextView separator);
/// `open` and `distance` are what the query before left: a sentence without its end, and how far before its match it
/// began.
Pieces sentences(TextView text, TextView query, bool by_enter, bool open, std::size_t distance);

struct EntryRule {
    Text entry_end;
    std::size_t window, start_offset, first_position;
};
Pieces entries(TextView compared, TextView text, TextView query, const EntryRule& rule);

/// A text of up to `size` characters made of these pieces.
Text random_text(std::mt19937& random, const std::vector<Text>& pieces, std::size_t size);

} // namespace tarvik::test
