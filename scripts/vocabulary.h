#pragma once

#include "mainwindow/mainwindow.h"
#include "scripts/script.h"

#include <algorithm>

/// What scripts and transcripts call the values that stand for something.
namespace tarvik {

template <typename Meaning>
struct Named {
    std::string_view word;
    Meaning meaning;
};
inline constexpr Named<MouseButton> mouse_buttons[] = {
    {"left", MouseButton::Left}, {"middle", MouseButton::Middle}, {"right", MouseButton::Right}};
inline constexpr Named<MenuEntry> menu_entries[] = {
    {"copy1", MenuEntry::copy1}, {"paste1", MenuEntry::paste1}, {"nothing", MenuEntry::nothing}};
inline constexpr Named<Answer> answer_words[] = {
    {"ok", Answer::OK}, {"cancel", Answer::Cancel}, {"yes", Answer::Yes}, {"no", Answer::No}, {"none", Answer::None}};
inline constexpr Named<Icon> icon_words[] = {{"none", Icon::None},
                                             {"information", Icon::Information},
                                             {"question", Icon::Question},
                                             {"exclamation", Icon::Exclamation},
                                             {"critical", Icon::Critical}};

template <typename Rows, typename Meaning>
std::string word_of(const Rows& rows, Meaning meaning)
{
    return std::string(std::ranges::find(rows, meaning, &Named<Meaning>::meaning)->word);
}

/// Throws ScriptFailure for a word that is none of them; `kind` names what it should be.
template <typename Rows>
auto meaning_of(const Rows& rows, const Word& word, const std::string& kind = "word")
{
    for (const auto& row : rows)
        if (word.utf8() == row.word) return row.meaning;
    throw ScriptFailure("unknown " + kind + " " + word.utf8());
}

} // namespace tarvik
