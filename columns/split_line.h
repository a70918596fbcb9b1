#pragma once

#include "platform/text/text.h"

#include <span>

namespace tarvik {

inline constexpr std::size_t last_split_column = 99;
/// A TAB with this many TABs behind it counts as one with the next.
inline constexpr std::size_t swallowing_tabs = 21;

/// Walks a row text, which is the line with a TAB before and behind, and calls `field(column, start, length)` for each
/// field: columns count from 1, `start` from 0 in the line. Fields behind the last column that is stored are left out.
template <typename Char, typename Field>
void split_line(std::span<const Char> line, Field&& field)
{
    constexpr auto tab = static_cast<Char>(U'\t');
    // Place p of the row text is line[p - 1]; the last place is the closing TAB.
    const std::size_t last = line.size() + 1;
    const auto is_tab = [&](std::size_t place) { return place == last || line[place - 1] == tab; };
    const auto swallows = [&](std::size_t place) {
        if (place + swallowing_tabs > last) return false;
        for (std::size_t p = place + 1; p <= place + swallowing_tabs; ++p)
            if (!is_tab(p)) return false;
        return true;
    };
    std::size_t opening = 0;
    for (std::size_t column = 1; opening < last && column <= last_split_column; ++column) {
        const std::size_t start = opening + (swallows(opening) ? 2 : 1);
        std::size_t closing = start;
        while (closing < last && line[closing - 1] != tab) ++closing;
        field(column, start - 1, closing - start);
        opening = closing;
    }
}

/// The same for a line of any storage.
template <typename Field>
void split_line(TextView line, Field&& field)
{
    line.visit([&field]<typename Char>(std::span<const Char> characters) {
        split_line(characters, std::forward<Field>(field));
    });
}

} // namespace tarvik
