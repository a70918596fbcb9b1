#include "reading/sentence_endings.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::size_t near_window = 2'000, far_window = 40'000;

} // namespace

SentenceEndings::Ending SentenceEndings::ending_at(std::size_t line_feed) const
{
    const auto character = [&](std::size_t before) { return line_feed >= before ? text_[line_feed - before] : U'\0'; };
    const auto ending = [&](Kind kind, std::size_t length) {
        return Ending{kind, line_feed + 1 - length, line_feed + 1};
    };
    if (character(1) != U'\r') return ending(kinds, 0);
    switch (character(2)) {
    case U'。': return ending(stop, 3);
    case U'.': return ending(full_stop, 3);
    case U'!': return ending(exclamation, 3);
    case U' ': return character(3) == U'。' ? ending(stop_blank, 4) : ending(kinds, 0);
    default: return ending(kinds, 0);
    }
}

std::size_t SentenceEndings::last_before(std::size_t place)
{
    while (read_back_ < place) {
        const std::size_t line_feed = text_.substr(0, place).find(U'\n', read_back_);
        if (line_feed == npos) {
            read_back_ = place;
            break;
        }
        const Ending ending = ending_at(line_feed);
        if (ending.kind != kinds) last_ = ending.place;
        read_back_ = line_feed + 1;
    }
    return last_;
}

void SentenceEndings::read_ahead(std::size_t end)
{
    const TextView text = text_.substr(0, end);
    while (read_ahead_ < text.size()) {
        const std::size_t line_feed = text.find(U'\n', read_ahead_);
        if (line_feed == npos) {
            read_ahead_ = text.size();
            break;
        }
        const Ending ending = ending_at(line_feed);
        if (ending.kind < exclamation) ahead_[ending.kind].push_back(ending.place);
        read_ahead_ = line_feed + 1;
    }
}

SentenceEndings::Positions SentenceEndings::within(std::size_t place, std::size_t window)
{
    read_ahead(place + window);
    for (auto& places : ahead_)
        while (!places.empty() && places.front() < place) places.pop_front();
    const auto first = [&](Kind kind, std::size_t length) -> std::size_t {
        const auto& places = ahead_[kind];
        if (places.empty() || places.front() + length > place + window) return 0;
        return places.front() - place + 1;
    };
    return {first(stop, 3), first(stop_blank, 4), first(full_stop, 3)};
}

SentenceEndings::Positions SentenceEndings::behind(std::size_t place)
{
    // What ends in front of the place cannot lie behind it.
    read_ahead_ = std::max(read_ahead_, place);
    for (auto& places : ahead_)
        while (!places.empty() && places.front() < place) places.pop_front();
    const Positions near = within(place, near_window);
    return near.any() ? near : within(place, far_window);
}

} // namespace tarvik
