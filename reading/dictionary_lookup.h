#pragma once

#include "reading/dictionary_layout.h"
#include "reading/queries.h"

namespace tarvik {

/// One of the layouts with what its lookups fill.
struct Dictionary {
    DictionaryLayout layout;
    TextArray Module1::*results;
    Colour colour;
};

extern const Dictionary chinese_dictionary;
extern const Dictionary english_letter_dictionary;
extern const Dictionary english_other_dictionary;

/// Which of the English dictionary's layouts serves the query.
const Dictionary& english_dictionary_for(TextView query);

/// Looks the query up in the Chinese or the English dictionary, whichever is selected. Gives whether it ran to its end.
bool look_up(Program& program, const QueryEntry& entry);

/// Reads the letter file of the query into the result pane, if it has one, and finds its entries again. Gives false
/// when the file is missing, which the user is told.
bool find_english_entries(Program& program, const QueryEntry& entry);

} // namespace tarvik
