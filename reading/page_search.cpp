#include "reading/reading.h"

#include "mainwindow/scratch_file.h"
#include "platform/text/code_page.h"
#include "platform/text/occurrences.h"
#include "reading/marking.h"

#include <algorithm>
#include <optional>
#include <span>

namespace tarvik {

namespace {

constexpr std::u32string_view title = U"Tarvik";
constexpr std::u32string_view word_file = U"betweensousuo.txt";
/// What stands in front of the query must be longer than this to be a word worth keeping.
constexpr std::size_t shortest_left_out = 7;

bool belongs_to_word(char32_t character)
{
    const int code = char_code(character);
    return (code >= '0' && code <= '9') || (code >= '@' && code <= 'z') || code == ';';
}

bool ends_word_backward(char32_t character)
{
    return character == U']' || !belongs_to_word(character);
}

/// The words in front of the matches of a page. The look goes back over as many characters as the number box says, and
/// they may be the whole page: so every place that ends a word is passed once for the page, not once for each match.
class WordsBefore {
public:
    WordsBefore(TextView page, TextView query, std::size_t width)
        : page_(page), width_(width), places_(page, query), length_(query.size())
    {
    }

    /// The line to be kept for the match at `place`, which counts from 0, lies behind the width and only rises: the
    /// word, the match and a closing ";". Nothing when too few characters stand in front of the query.
    std::optional<Text> line_for(std::size_t place)
    {
        const std::size_t look = place - width_, query = places_.at_or_behind(look);
        for (; passed_ <= query; ++passed_)
            if (ends_word_backward(page_[passed_])) last_end_ = passed_;
        const std::size_t begin = last_end_ == npos ? look : std::max(last_end_, look);
        if (query - begin <= shortest_left_out) return std::nullopt;
        const std::size_t end = place + length_;
        for (next_end_ = std::max(next_end_, begin); next_end_ < end;) {
            if (!belongs_to_word(page_[next_end_])) break;
            ++next_end_;
        }
        if (next_end_ == end) return Text();
        return page_.substr(next_end_ + 1, end - next_end_ - 1).str() + U";";
    }

private:
    TextView page_;
    std::size_t width_;
    Occurrences places_;
    std::size_t length_;
    std::size_t passed_ = 0, last_end_ = npos; ///< how far word ends are known, and the last of them
    std::size_t next_end_ = 0;                 ///< no word ends between where the latest word begins and here
};

/// The side file of one search. What cannot be written costs one message and not the search.
class WordFile {
public:
    explicit WordFile(Program& program) : program_(program), closed_(ScratchFile(program, word_file).failed()) {}

    void collect(std::span<const Position> places)
    {
        const Form1& form1 = program_.form1;
        const auto width = number(form1.number_box().text());
        if (closed_ || !width || *width < 0) return;
        std::optional<WordsBefore> words;
        std::string lines;
        for (const Position place : places) {
            if (static_cast<double>(place.number()) <= *width) continue;
            if (!words) words.emplace(form1.RichTextBox1.text(), form1.needle, static_cast<std::size_t>(*width));
            const auto line = words->line_for(place.offset());
            if (!line) continue;
            encode_to(*line, lines);
            lines += "\r\n";
            if (written_ + lines.size() > most_bytes) break;
        }
        append(lines);
    }

private:
    void append(const std::string& lines)
    {
        if (lines.empty()) return;
        written_ += lines.size();
        try {
            program_.platform.files.append(installed(program_, word_file), lines);
            if (written_ <= most_bytes) return;
            tell(program_, Text(word_file) + U"已经超过 64 MB，不再收集其后的字符串，查寻继续。", title);
        } catch (const Failure& failure) {
            tell(program_, failure.message(), title);
        }
        closed_ = true;
    }

    static constexpr std::size_t most_bytes = std::size_t{64} << 20;
    Program& program_;
    bool closed_;
    std::size_t written_ = 0;
};

void show_found_page(Program& program, std::size_t page, TextView query, WordFile& words)
{
    Form1& form1 = program.form1;
    form1.RichTextBox1.set_visible(true);
    form1.RichTextBox2.set_visible(false);
    form1.page_box().set_text(number_text(page));
    form1.RichTextBox1.set_text(program.module1.pages.get(page));
    if (form1.RichTextBox1.empty()) return;
    form1.needle = query.str();
    words.collect(mark_needle(program, english_match_colour, LetterCase::Apart));
}

} // namespace

std::size_t sousss(TextView text, TextView query)
{
    for (std::size_t place = instr(text, query); place > 0; --place)
        if (ends_word_backward(text[place - 1])) return place;
    return 1;
}

TextView sousss1(TextView text)
{
    std::size_t place = 1;
    while (place <= text.size() && belongs_to_word(text[place - 1])) ++place;
    return mid(text, place + 1);
}

void search_pages(Program& program)
{
    if (ask(program, U"是否要搜索包含查寻字符串的页数?", title, Buttons::OKCancel) != Answer::OK) return;
    const Text query = ltrim(program.form1.query_box().text()).str();
    WordFile words(program);
    bool found = false;
    const auto last = static_cast<std::size_t>(program.form1.lastpage);
    for (std::size_t page = 0; page <= last; ++page) {
        if (instr(ltrim(program.module1.pages.get(page)), query) == 0) continue;
        found = true;
        show_found_page(program, page, query, words);
        const Text question = U"是否继续查找，目前已经查到第" + number_text(page) + U"页。";
        if (ask(program, question, title, Buttons::OKCancel) != Answer::OK) return;
    }
    if (found) tell(program, U"查寻完毕,再也没有符合条件的结果！", title, Icon::Information);
}

} // namespace tarvik
