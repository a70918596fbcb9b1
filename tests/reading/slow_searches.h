#pragma once

#include "mainwindow/mainwindow.h"

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

struct EntryRule {
    Text entry_end;
    std::size_t window, start_offset, first_position;
};

/// The characters from a position that may lie before the text.
inline Text piece(TextView text, long start, long length)
{
    if (start < 1) {
        length += start - 1;
        start = 1;
    }
    return length <= 0 ? Text() : mid(text, static_cast<std::size_t>(start), static_cast<std::size_t>(length)).str();
}

inline std::vector<std::size_t> places_marked(TextView text, TextView needle, std::size_t& last_found)
{
    std::vector<std::size_t> marked;
    for (std::size_t q = 1; q <= text.size(); ++q) {
        last_found = instr(text, needle, q);
        if (last_found == 0) break;
        if (last_found == 1) continue;
        marked.push_back(last_found);
        if (q < last_found + needle.size()) q = last_found + needle.size();
    }
    return marked;
}

inline Pieces pieces_between_separators(TextView t, TextView q, TextView s)
{
    Pieces found;
    const auto l = static_cast<long>(s.size());
    for (std::size_t i = 1; i <= t.size() && !found.open; ++i) {
        if (q.empty() || mid(t, i, q.size()) != q) continue;
        std::size_t k = 0;
        while (k < i && !found.open) {
            found.open = rtrim(mid(t, i - k, k)).starts_with(s); // behind its beginning it was looked for before
            if (!found.open) ++k;
        }
        auto p = static_cast<long>(instr(mid(t, i, 5000), s));
        if (p == 0) p = static_cast<long>(instr(mid(t, i, 40000), s));
        found.count += 1;
        const auto at = static_cast<long>(i), back = static_cast<long>(k);
        if (!found.open) {
            if (p > 0) found.stored.push_back(piece(t, 1, at + p - 1));
        } else if (p > 0) {
            const bool stop = s.contains(U".") || s.contains(U"。");
            found.stored.push_back(stop ? piece(t, at - back + l - 2, back + p - l + 2)
                                        : piece(t, at - back, back + p - 1));
            found.open = false;
        }
    }
    return found;
}

/// `open` and `distance` are what the query before left: a sentence without its end, and how far before its match it
/// began.
inline Pieces sentences(TextView t, TextView q, bool by_enter, bool open, std::size_t k)
{
    Pieces found;
    found.open = open;
    bool before = open;
    for (std::size_t i = 1; i <= t.size(); ++i) {
        if (q.empty() || mid(t, i, q.size()) != q) continue;
        if (!found.open) {
            for (k = 0, before = false; k < i && !before;) {
                const TextView look = rtrim(mid(t, i - k, k));
                for (const TextView ending : {U"。\r\n", U"。 \r\n", U".\r\n", U"!\r\n"})
                    before = before || look.starts_with(ending); // further on it was looked for before
                if (!before) ++k;
            }
            found.open = before;
        }
        found.count += 1;
        long a = 0, b = 0, c = 0;
        for (const std::size_t window : {2000U, 40000U}) {
            if (a + b + c > 0) break;
            const TextView look = mid(t, i, window);
            a = static_cast<long>(instr(look, U"。\r\n"));
            b = static_cast<long>(instr(look, U"。 \r\n"));
            c = static_cast<long>(instr(look, U".\r\n"));
        }
        if (a + b + c == 0) continue;
        if (by_enter)
            a = b = c =
                static_cast<long>(min3to1(static_cast<double>(a), static_cast<double>(b), static_cast<double>(c)));
        const auto at = static_cast<long>(i), back = static_cast<long>(k);
        const long start = before ? at - back + 1 : 1, length = before ? back : at;
        found.stored.push_back(piece(t, start, c > 0 ? length + c + 1 : b > 0 ? length + b + 2 : length + a + 1));
        if (before) {
            found.open = false;
            continue;
        }
        std::size_t places = 0;
        for (std::size_t place = 1; place <= t.size(); ++place) places += instr(mid(t, place, q.size()), q) > 0;
        if (places < 3) break;
    }
    return found;
}

inline Pieces entries(TextView compared, TextView t, TextView q, const EntryRule& rule)
{
    Pieces found;
    for (std::size_t i = rule.first_position; i <= t.size(); ++i) {
        if (q.empty() || mid(compared, i, q.size()) != q) continue;
        const TextView window = mid(t, i - rule.window, rule.window);
        const auto e = static_cast<long>(instr(window, rule.entry_end));
        if (e == 0 && instr(window, U"?\r\n") == 0 && instr(window, U"!\r\n") == 0) continue;
        found.count += 1;
        const auto p = static_cast<long>(instr(mid(t, i, 10000), rule.entry_end));
        const long d = static_cast<long>(rule.start_offset) - e;
        if (p > 0) found.stored.push_back(piece(t, static_cast<long>(i) - d, d + p));
    }
    return found;
}

/// A text of up to `size` characters made of these pieces.
inline Text random_text(std::mt19937& random, const std::vector<Text>& pieces, std::size_t size)
{
    Text text;
    const std::size_t wanted = random() % (size + 1);
    while (text.size() < wanted) text += pieces[random() % pieces.size()];
    return text;
}

} // namespace tarvik::test
