#pragma once

#include "calendar/calendar.h"
#include "columns/columns.h"

#include <cmath>
#include <map>

/// The column engine as simple loops over endless arrays, quadratic where nothing forbids it, so that it can be read.
namespace tarvik::test {

inline const Text line_end = U"\r\n", carriage_return = U"\r", tab = U"\t", tabs(21, U'\t');

/// An array whose elements exist when they are asked for.
template <typename Value>
class Endless : public std::map<std::size_t, Value> {
public:
    Value& operator()(std::size_t index) { return (*this)[index]; }
};
using Row = Endless<Text>;

class SlowEngine {
public:
    bool comp = false, showdata = true, notcap = false;
    std::size_t sufcount = 0, sugcount = 0, curcount = 0, sufrows = 0, sugrows = 0, keycount = 0;
    double resultcount = 0, compcount = 0, daydiff = 0;
    Row rowhits, sufrow, sugrow, distinct, distinctn, keylist;
    Endless<Row> suf, sug;
    Text pane, box;                    ///< RichTextBox3 and Text1(2)
    std::map<std::string, Text> files; ///< scratch files in characters
    std::size_t sufcol = 1, sugcol = 1, datefrom = 2, dateto = 3;
    double days = 10;

    void scan(const Text& document, const Text& needle)
    {
        rowhits.clear();
        for (std::size_t p = 1; !needle.empty() && p <= document.size(); ++p) {
            if (mid(document, p, needle.size()) != TextView(needle)) continue;
            resultcount += 1;
            std::size_t d = 0, f = 0;
            while (d <= p - 1 && (d == 0 || document[p - d - 1] != U'\r')) ++d;
            while (f <= 720 && (f == 0 || mid(document, p + f - 1, 1) != TextView(carriage_return))) ++f;
            const std::size_t h = rowhits.size();
            if (d == p) rowhits(h) = mid(document, 1, p + f - 2).str();
            else if (f <= 720) rowhits(h) = d + f < 3 ? Text() : mid(document, p - d + 2, d + f - 3).str();
        }
    }

    void query(const Text& document, const Text& text)
    {
        pane = line_end;
        files["betweenp.txt"] = U"\r\r\n";
        if (text.empty()) return;
        resultcount = 0;
        scan(lower(document), lower(ltrim(text)));
        const std::size_t h = rowhits.size();
        std::size_t duplicates = 0, n = 0;
        for (std::size_t a = 0; a < h; ++a)
            for (std::size_t b = a + 1; b < h; ++b)
                if (!rowhits(a).empty() && rowhits(a) == rowhits(b)) rowhits(a).clear(), ++duplicates;
        Row& rows = comp ? sugrow : sufrow;
        Text file;
        for (std::size_t a = 0; a <= h; ++a) {
            if (a != h && rowhits(a).empty()) continue;
            rows(n) = tab;
            rows(n) += rowhits(a);
            rows(n) += tab;
            file += rows(n++);
            file += line_end;
        }
        files["betweenp.txt"].clear();
        if (showdata) show("betweenp.txt", file);
        if (comp) sugcount = sugrows = n - 1;
        else sufcount = sufrows = curcount = n - 1;
        box = number_text(resultcount - static_cast<double>(duplicates));
    }

    void split()
    {
        pane.clear();
        files["betweenpq.txt"] = U"\r\r\n";
        curcount = comp ? sugcount : sufcount;
        if (curcount == 0) return;
        Text file;
        for (std::size_t i = 0; i <= curcount; ++i, file += line_end) {
            const Text row = (comp ? sugrow : sufrow)(i);
            for (std::size_t column = 0, p = 1, e = 0; p <= row.size(); p = e == 0 ? p + 1 : e) {
                const std::size_t k = mid(row, p + 1, 21) == TextView(tabs) ? 1 : 0;
                e = row[p - 1] == U'\t' ? instr(row, tab, p + k + 1) : 0;
                if (e == 0 || ++column >= 100) continue;
                const Text field = mid(row, p + k + 1, e - (p + k) - 1).str();
                (comp ? sug : suf)(i)(column) = field;
                if (!field.empty()) box = text(curcount);
                if (!field.empty() && showdata)
                    file +=
                        (comp ? U"sug(" : U"suf(") + text(i) + U"," + text(column) + U")***" + field + Text(11, U' ');
            }
        }
        files["betweenpq.txt"].clear();
        if (!showdata) pane = file;
        else show("betweenpq.txt", file), box = text(curcount);
    }

    void sort(std::size_t c)
    {
        pane.clear();
        if (comp) return;
        std::size_t n = 0;
        for (std::size_t r = 0; r < sufcount; ++r) n += sufrow(r).empty() ? 0 : 1;
        for (std::size_t a = 0; a < n; ++a) {
            std::size_t m = a;
            for (std::size_t b = a + 1; b <= n; ++b) {
                const double x = sunnum(suf(m)(c)), y = sunnum(suf(b)(c));
                if (x != 0 && y != 0 && x > y) m = b;
            }
            std::swap(suf(a)(c), suf(m)(c));
            std::swap(sufrow(a), sufrow(m));
        }
        show("between2.txt", remaining_rows());
        box = text(n);
    }

    void statistics(std::size_t c, bool with_keys)
    {
        pane.clear();
        if (comp) return;
        Row copy;
        distinct.clear(), distinctn.clear();
        for (std::size_t r = 0; r < curcount; ++r) distinct(r) = copy(r) = suf(r)(c);
        std::vector<std::size_t> counts(curcount, 0);
        std::size_t total = 0;
        for (std::size_t a = 0; a < curcount && total < curcount; ++a)
            for (std::size_t b = 0; b < curcount; ++b)
                if (!copy(b).empty() && copy(b) == distinct(a)) copy(b).clear(), ++counts[a], ++total;
        if (with_keys) keylist.clear(), keycount = 0;
        Text file;
        for (std::size_t k = 0; k < curcount; ++k) {
            distinctn(k) = text(counts[k]);
            if (counts[k] == 0) continue;
            file += U"\t" + distinct(k) + U"\t\t\t" + text(counts[k]) + U"\t\r\n";
            if (with_keys) keylist(keycount++) = distinct(k);
        }
        show("betweensum.txt", file);
        pane += U"\t合计:\t\t\t" + text(total) + U"\t\r\n";
    }

    void begin_comparison()
    {
        pane.clear();
        for (const char* name : {"", "1", "3", "5", "ping", "ping1"})
            files[std::string("between") + name + ".txt"] = U"\r\r\n";
        compcount = 0;
    }

    void cross()
    {
        sufcount = std::max(sufcount, sugcount);
        std::vector<Text> match;
        for (std::size_t i = 0; i <= sufcount; ++i)
            for (std::size_t j = 0; j <= sufcount; ++j)
                if (!sug(j)(sugcol).empty() && sug(j)(sugcol) == suf(i)(sufcol)) {
                    if (notcap) sufrow(i).clear();
                    else match.push_back(sufrow(i));
                }
        const std::size_t pairs = match.size();
        std::size_t d = pairs;
        for (std::size_t a = 0; a < pairs; ++a)
            for (std::size_t b = a + 1; b < pairs; ++b)
                if (!match[a].empty() && match[a] == match[b]) match[a].clear(), --d;
        std::erase(match, Text());
        match.resize(d + 2);
        Text file;
        for (const Text& row : match) file += row + line_end;
        show("between1.txt", file);
        box = text(d);
        compcount = static_cast<double>(pairs);
        if (notcap) {
            compcount = 0;
            for (std::size_t r = 0; r <= sufcount; ++r) compcount += sufrow(r).empty() ? 0 : 1;
            show("between.txt", remaining_rows());
            box = number_text(std::max(compcount - 1, 0.0));
        }
        pane += line_end;
    }

    void parallel(bool equal)
    {
        Text file;
        for (std::size_t i = 0; i <= std::min(sufcount, sugcount); ++i) {
            const Text &a = suf(i)(sufcol), &b = sug(i)(sugcol);
            if (a.empty() || b.empty() || (a == b) != equal) continue;
            file += b;
            file += equal ? U"＝\t" : U"≠\t";
            file += sufrow(i);
            file += line_end;
            compcount += 1;
        }
        box = number_text(compcount);
        show(equal ? "betweenping.txt" : "betweenping1.txt", file);
    }

    void reset()
    {
        for (std::size_t r = 0; r <= sugrows; ++r) sufrow(r) = sugrow(r) = {}, suf(r) = sug(r) = {};
        comp = false;
    }

    void check_dates()
    {
        Text file;
        for (std::size_t r = 0; r <= curcount; ++r) {
            Text &a = suf(r)(datefrom), &b = suf(r)(dateto);
            if (a.empty() || b.empty()) continue;
            a = a.substr(0, a.find(U' '));
            b = b.substr(0, b.find(U' '));
            const Text first = dsx(a), second = dsx(b);
            files["between3.txt"] = file;
            if (first == U"error" || second == U"error") return;
            if (!day_of(first) || !day_of(second)) continue;
            daydiff = std::fabs(*day_of(second) - *day_of(first));
            if (daydiff <= days) continue;
            compcount += 1;
            file += sufrow(r) + U"        " + number_text(daydiff) + line_end;
        }
        show("between3.txt", file);
        box = number_text(compcount);
    }

    void query_field(const Text& given, std::size_t c, std::size_t from, std::size_t to)
    {
        const Text needle = lower(ltrim(given));
        Text file;
        std::size_t count = 0;
        for (std::size_t r = 0; r <= curcount; ++r) {
            const Text f = lower(ltrim(suf(r)(c)));
            bool found = false;
            for (std::size_t k = 1; !needle.empty() && k <= f.size(); ++k)
                found = found || mid(f, k, needle.size()) == TextView(needle);
            if (!found) continue;
            file += sufrow(r);
            file += tab;
            file += mid(f, from, to + 1 - from).str();
            file += line_end;
            ++count;
        }
        show("between5.txt", file);
        box = text(count);
    }

private:
    static Text text(std::size_t value) { return number_text(value); }
    Text remaining_rows()
    {
        Text rows;
        for (std::size_t r = 0; r <= sufcount; ++r)
            if (!sufrow(r).empty()) rows += sufrow(r) + line_end;
        return rows;
    }
    void show(const std::string& name, const Text& text)
    {
        files[name] = text;
        if (!text.empty()) pane = text;
    }
};

} // namespace tarvik::test
