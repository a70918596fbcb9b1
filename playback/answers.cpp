#include "playback/answers.h"

namespace tarvik {

namespace {

struct AnswerWord {
    Answer answer;
    std::string_view word;
};
constexpr AnswerWord words[] = {
    {Answer::OK, "ok"}, {Answer::Cancel, "cancel"}, {Answer::Yes, "yes"}, {Answer::No, "no"}, {Answer::None, "none"}};

} // namespace

std::string_view answer_word(Answer answer)
{
    for (const AnswerWord& row : words)
        if (row.answer == answer) return row.word;
    return {};
}

Answer answer_named(std::u32string_view word)
{
    for (const AnswerWord& row : words)
        if (from_utf8(row.word) == word) return row.answer;
    return Answer::None;
}

} // namespace tarvik
