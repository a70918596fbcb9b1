#pragma once

#include "platform/platform.h"

#include <deque>
#include <optional>

namespace tarvik {

/// What the user is going to answer, one queue for each kind of box. A text of nothing is a box cancelled.
struct Answers {
    std::deque<Answer> replies;
    std::deque<std::optional<Text>> inputs;
    std::deque<std::optional<Text>> files;
};

/// The word for an answer in scripts and transcripts: ok, cancel, yes, no.
std::string_view answer_word(Answer answer);
/// Answer::None for a word that is none.
Answer answer_named(std::u32string_view word);

} // namespace tarvik
