#include "reading/page_search.h"

#include "mainwindow/scratch_file.h"
#include "platform/code_page.h"
#include "reading/marking.h"

#include <cmath>
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

/// The word in front of the match at `place` with the match and a closing ";", from the `width` characters before it.
std::optional<Text> word_before(TextView text, std::size_t place, std::size_t width, TextView query)
{
    const Text piece = mid(text, place - width, width + query.size()).str() + TextView(U";");
    const TextView word = mid(piece, sousss(piece, query));
    if (instr(word, query) <= shortest_left_out + 1) return std::nullopt;
    return sousss1(word).str();
}

void collect_words(Program& program, std::span<const std::size_t> places)
{
    const auto width = number(program.form1.number_box().text());
    if (!width || *width < 0) return;
    std::string lines;
    for (const std::size_t place : places) {
        if (static_cast<double>(place) <= *width) continue;
        const auto word = word_before(program.form1.RichTextBox1.text(), place, static_cast<std::size_t>(*width),
                                      program.form1.needle);
        if (!word) continue;
        encode_to(*word, lines);
        lines += "\r\n";
    }
    if (!lines.empty()) program.platform.files.append(installed(program, word_file), lines);
}

void show_found_page(Program& program, std::size_t page, TextView query)
{
    Form1& form1 = program.form1;
    form1.RichTextBox2.set_visible(false);
    form1.RichTextBox1.set_visible(true);
    form1.page_box().set_text(number_text(static_cast<double>(page)));
    form1.RichTextBox1.set_text(program.module1.pages.get(page));
    if (form1.RichTextBox1.empty()) return;
    form1.needle = query.str();
    collect_words(program, mark_needle(program, english_match_colour, LetterCase::Apart));
}

} // namespace

std::size_t sousss(TextView text, TextView query)
{
    for (std::size_t place = instr(text, query); place > 0; --place)
        if (text[place - 1] == U']' || !belongs_to_word(text[place - 1])) return place;
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
    const ScratchFile emptied(program, word_file);
    bool found = false;
    const auto last = static_cast<std::size_t>(program.form1.lastpage);
    for (std::size_t page = 0; page <= last; ++page) {
        if (instr(ltrim(program.module1.pages.get(page)), query) == 0) continue;
        found = true;
        show_found_page(program, page, query);
        const Text question = U"是否继续查找，目前已经查到第" + number_text(static_cast<double>(page)) + U"页。";
        if (ask(program, question, title, Buttons::OKCancel) != Answer::OK) return;
    }
    if (found) tell(program, U"查寻完毕,再也没有符合条件的结果！", title, Icon::Information);
}

} // namespace tarvik
