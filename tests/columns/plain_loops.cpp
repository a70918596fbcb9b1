#include "tests/columns/plain_loops.h"

#include "columns/date_text.h"
#include "columns/sort.h"

#include <cmath>

namespace tarvik::test {

namespace {

Text number(std::size_t value)
{
    return number_text(static_cast<double>(value));
}

constexpr std::u32string_view line_end = U"\r\n";

} // namespace

void PlainLoops::scan(const Text& document, const Text& needle)
{
    for (std::size_t i = 0; i <= hits_; ++i) rowhits(i).clear();
    hits_ = 0;
    const std::size_t n = needle.size();
    for (std::size_t p = 1; n > 0 && p <= document.size(); ++p) {
        if (mid(document, p, n) != TextView(needle)) continue;
        resultcount += 1;
        std::size_t d = 0, f = 0;
        while (d <= p - 1 && (d == 0 || document[p - d - 1] != U'\r')) ++d;
        while (f <= 720 && mid(document, p, f).find(U'\r') == npos) ++f;
        const bool before = d <= p - 1, ahead = f <= 720;
        if (!before) rowhits(hits_++) = mid(document, 1, p + f - 2).str();
        else if (ahead) rowhits(hits_++) = d + f < 3 ? Text() : mid(document, p - d + 2, d + f - 3).str();
    }
}

void PlainLoops::query(const Text& document, const Text& text)
{
    pane = U"\r\n";
    clear("betweenp.txt");
    if (text.empty()) return;
    resultcount = 0;
    scan(lower(document), lower(ltrim(text)));
    std::size_t duplicates = 0, rows = 0;
    for (std::size_t a = 0; a < hits_; ++a)
        for (std::size_t b = a + 1; b <= hits_; ++b)
            if (!rowhits(a).empty() && rowhits(a) == rowhits(b)) {
                ++duplicates;
                rowhits(a).clear();
            }
    std::vector<Text> list;
    for (std::size_t a = 0; a < hits_; ++a)
        if (!rowhits(a).empty()) list.push_back(rowhits(a));
    rows = list.size();
    list.emplace_back();
    Text& file = files["betweenp.txt"];
    file.clear();
    for (std::size_t r = 0; r <= rows; ++r) {
        const Text row = U"\t" + list[r] + U"\t";
        if (showdata) file += row + Text(line_end);
        (comp ? sugrow : sufrow)(r) = row;
    }
    if (showdata) load("betweenp.txt");
    if (comp) sugcount = sugrows = rows;
    else sufcount = sufrows = curcount = rows;
    box = number_text(resultcount - static_cast<double>(duplicates));
}

void PlainLoops::split()
{
    pane.clear();
    clear("betweenpq.txt");
    curcount = comp ? sugcount : sufcount;
    if (curcount == 0) return;
    Text file, line;
    for (std::size_t i = 0; i <= curcount; ++i) {
        const Text row = (comp ? sugrow : sufrow)(i);
        std::size_t column = 0;
        for (std::size_t p = 1; p <= row.size();) {
            const std::size_t k = mid(row, p + 1, 21) == TextView(Text(21, U'\t')) ? 1 : 0;
            const std::size_t e = row[p - 1] == U'\t' ? instr(row, U"\t", p + k + 1) : 0;
            if (e == 0) {
                ++p;
                continue;
            }
            if (++column < 100) {
                const Text field = mid(row, p + k + 1, e - (p + k) - 1).str();
                (comp ? sug : suf)(i)(column) = field;
                if (!field.empty() && showdata)
                    line += Text(comp ? U"sug(" : U"suf(") + number(i) + U"," + number(column) + U")***" + field +
                            Text(11, U' ');
                else if (!field.empty()) box = number(curcount);
            }
            p = e;
        }
        if (showdata) file += line + Text(line_end);
        else pane += line_end;
        line.clear();
    }
    files["betweenpq.txt"] = file;
    if (!showdata) return;
    load("betweenpq.txt");
    box = number(curcount);
}

void PlainLoops::sort(std::size_t c)
{
    pane.clear();
    if (comp) return;
    std::size_t n = 0;
    for (std::size_t r = 0; r < sufcount; ++r)
        if (!sufrow(r).empty()) ++n;
    for (std::size_t a = 0; a < n; ++a) {
        std::size_t m = a;
        for (std::size_t b = a + 1; b <= n; ++b) {
            const double x = sunnum(suf(m)(c)), y = sunnum(suf(b)(c));
            if (x != 0 && y != 0 && x > y) m = b;
        }
        std::swap(suf(a)(c), suf(m)(c));
        std::swap(sufrow(a), sufrow(m));
    }
    Text& file = files["between2.txt"];
    file.clear();
    for (std::size_t r = 0; r <= sufcount; ++r)
        if (!sufrow(r).empty()) file += sufrow(r) + Text(line_end);
    load("between2.txt");
    box = number(n);
}

void PlainLoops::statistics(std::size_t c, bool with_keys)
{
    pane.clear();
    if (comp) return;
    Row copy;
    distinct = distinctn = {};
    for (std::size_t r = 0; r < curcount; ++r) distinct(r) = copy(r) = suf(r)(c);
    std::vector<std::size_t> counts(curcount, 0);
    std::size_t total = 0;
    for (std::size_t a = 0; a < curcount && total < curcount; ++a)
        for (std::size_t b = 0; b < curcount; ++b)
            if (!copy(b).empty() && copy(b) == distinct(a)) {
                ++counts[a];
                ++total;
                copy(b).clear();
            }
    if (with_keys) keylist = {}, keycount = 0;
    Text& file = files["betweensum.txt"];
    file.clear();
    for (std::size_t k = 0; k < curcount; ++k) {
        distinctn(k) = number(counts[k]);
        if (counts[k] == 0) continue;
        file += U"\t" + distinct(k) + U"\t\t\t" + number(counts[k]) + U"\t\r\n";
        if (with_keys) keylist(keycount++) = distinct(k);
    }
    load("betweensum.txt");
    pane += U"\t合计:\t\t\t" + number(total) + U"\t\r\n";
}

void PlainLoops::begin_comparison()
{
    pane.clear();
    for (const char* name :
         {"between.txt", "between1.txt", "between3.txt", "between5.txt", "betweenping.txt", "betweenping1.txt"})
        clear(name);
    compcount = 0;
}

void PlainLoops::cross()
{
    sufcount = std::max(sufcount, sugcount);
    std::vector<Text> match(1), remainder(1);
    for (std::size_t i = 0; i <= sufcount; ++i)
        for (std::size_t j = 0; j <= sufcount; ++j) {
            if (sug(j)(sugcol).empty() || suf(i)(sufcol).empty() || sug(j)(sugcol) != suf(i)(sufcol)) continue;
            if (notcap) sufrow(i).clear();
            else match.push_back(sufrow(i));
        }
    const std::size_t pairs = match.size() - 1;
    std::size_t duplicates = 0;
    for (std::size_t a = 1; a < pairs; ++a)
        for (std::size_t b = a + 1; b <= pairs; ++b)
            if (!match[a].empty() && match[a] == match[b]) {
                ++duplicates;
                match[a].clear();
            }
    const std::size_t d = pairs - duplicates;
    std::vector<Text> list;
    for (const Text& row : match)
        if (!row.empty()) list.push_back(row);
    list.resize(d + 2);
    Text& file = files["between1.txt"];
    file.clear();
    for (const Text& row : list) file += row + Text(line_end);
    load("between1.txt");
    box = number(d);
    compcount = static_cast<double>(pairs);
    if (notcap) {
        for (std::size_t r = 0; r <= sufcount; ++r)
            if (!sufrow(r).empty()) remainder.push_back(sufrow(r));
        compcount = static_cast<double>(remainder.size() - 1);
        files["between.txt"].clear();
        for (std::size_t k = 1; k < remainder.size(); ++k) files["between.txt"] += remainder[k] + Text(line_end);
        load("between.txt");
        box = compcount == 0 ? U"0" : number_text(compcount - 1);
    }
    pane += line_end;
}

void PlainLoops::parallel(bool equal)
{
    Text& file = files[equal ? "betweenping.txt" : "betweenping1.txt"];
    file.clear();
    for (std::size_t i = 0; i <= std::min(sufcount, sugcount); ++i) {
        if (sug(i)(sugcol).empty() || suf(i)(sufcol).empty() || (sug(i)(sugcol) == suf(i)(sufcol)) != equal) continue;
        file += sug(i)(sugcol) + (equal ? U"＝" : U"≠") + U"\t" + sufrow(i) + Text(line_end);
        compcount += 1;
    }
    box = number_text(compcount);
    load(equal ? "betweenping.txt" : "betweenping1.txt");
}

void PlainLoops::reset()
{
    const Text shown = pane;
    const double count = compcount;
    for (std::size_t r = 0; r <= sugrows; ++r) {
        sufrow(r).clear();
        sugrow(r).clear();
        suf(r) = sug(r) = {};
    }
    begin_comparison();
    pane = shown;
    compcount = count;
}

void PlainLoops::check_dates()
{
    Text file;
    for (std::size_t r = 0; r <= curcount; ++r) {
        Text &a = suf(r)(datefrom), &b = suf(r)(dateto);
        if (a.empty() || b.empty()) continue;
        a = a.substr(0, a.find(U' '));
        b = b.substr(0, b.find(U' '));
        const Text first = dsx(a), second = dsx(b);
        if (first == U"error" || second == U"error") {
            files["between3.txt"] = file;
            return;
        }
        if (!day_of(first) || !day_of(second)) continue;
        daydiff = std::fabs(*day_of(second) - *day_of(first));
        if (daydiff <= days) continue;
        compcount += 1;
        file += sufrow(r) + U"        " + number_text(daydiff) + U"\r\n";
    }
    files["between3.txt"] = file;
    load("between3.txt");
    box = number_text(compcount);
}

void PlainLoops::query_field(const Text& text, std::size_t c, std::size_t from, std::size_t to)
{
    const Text needle = lower(ltrim(text));
    const std::size_t n = needle.size();
    std::size_t count = 0;
    Text& file = files["between5.txt"];
    file.clear();
    for (std::size_t r = 0; r <= curcount; ++r) {
        const Text f = lower(ltrim(suf(r)(c)));
        for (std::size_t k = 1; n > 0 && k <= f.size(); ++k) {
            if (mid(f, k, n) != TextView(needle)) continue;
            ++count;
            file += sufrow(r) + U"\t" + mid(f, from, to + 1 > from ? to + 1 - from : 0) + U"\r\n";
            break;
        }
    }
    load("between5.txt");
    box = number(count);
}

} // namespace tarvik::test
