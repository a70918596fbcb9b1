#include "reading/queries.h"
#include "reading/reading.h"

#include "mainwindow/scratch_file.h"
#include "platform/text/code_page.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

namespace tarvik {

namespace {

constexpr std::u32string_view paging_title = U"Tarvik 计算 之查寻";
constexpr double last_page_emptied = 100'000;

bool document_is_open(Program& program)
{
    if (is_number(program.form1.page_box().text())) return true;
    tell(program, U"请读入文本文件！", paging_title);
    return false;
}

/// Characters per page, a fraction of one not counted; below 1 nothing can be cut.
double page_size(const Program& program)
{
    return std::floor(number(program.form1.page_size_box().text()).value_or(0));
}

bool can_be_cut(Program& program)
{
    if (page_size(program) >= 1) return true;
    tell(program, U"每页的字数应为大于 0 的数字，请修改后再翻页！", paging_title);
    return false;
}

void show_page(Program& program, double page)
{
    const TextArray& pages = program.module1.pages;
    if (!(page >= 0 && page <= static_cast<double>(pages.last())))
        throw Failure(U"没有第" + number_text(page) + U"页，请在页面框中修改页数！");
    program.form1.RichTextBox1.set_text(pages.get(static_cast<std::size_t>(page)));
    program.form1.pageno = page;
}

/// A fraction of a page does not count.
double page_in_box(const Program& program)
{
    return std::floor(leading_number(program.form1.page_box().text()));
}

/// Tells something around the number of the page shown.
void tell_page(Program& program, TextView before, TextView behind)
{
    tell(program, before.str() + TextView(number_text(program.form1.pageno)) + behind, plain_title);
}

/// Cuts the open document into pages and sets lastpage; gives whether it could. Pages behind the new last one keep
/// their text. Throws Failure when `pages` is full; what was cut until then stays.
bool cut_pages(Program& program)
{
    Form1& form1 = program.form1;
    const double size = page_size(program);
    if (size < 1) return false;
    const Document& document = form1.RichTextBox2.document();
    const TextView text = document.text();
    const auto length = size <= static_cast<double>(text.size()) ? static_cast<std::size_t>(size) : text.size() + 1;
    const std::size_t full_pages = text.size() / length;
    form1.lastpage = 0;
    for (std::size_t page = 0; page <= full_pages; ++page) {
        form1.lastpage = static_cast<double>(page);
        program.module1.pages.set(page, text.substr(page * length, length), document.buffer());
    }
    return true;
}

void read_and_cut(Program& program, TextView path)
{
    Form1& form1 = program.form1;
    form1.RichTextBox1.set_visible(false);
    form1.RichTextBox2.set_visible(true);
    const ForeignText text = recognise_foreign([&] { return program.platform.files.open_for_input(path); });
    form1.RichTextBox2.set_content(PaneText(text.document.with_closing_line_end()));
    program.opened = {path.str(), text.encoding, text.lines_ended_in_lf};
    if (!cut_pages(program)) return;
    form1.page_box().set_text(number_text(form1.lastpage));
}

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
        next_end_ = std::max(next_end_, begin);
        while (next_end_ < end && belongs_to_word(page_[next_end_])) ++next_end_;
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
            tell(program_, Text(word_file) + U"已经超过 64 MB，不再收集其后的字符串，查寻继续。", plain_title);
        } catch (const Failure& failure) {
            tell(program_, failure.message(), plain_title);
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
    words.collect(mark_needle(program, form1.RichTextBox1.text(), english_match_colour));
}

/// Stops at each page that holds the query and collects the code-like words in front of its matches in a side file.
void search_pages(Program& program)
{
    if (ask(program, U"是否要搜索包含查寻字符串的页数?", plain_title, Buttons::OKCancel) != Answer::OK) return;
    const Text query = ltrim(program.form1.query_box().text()).str();
    WordFile words(program);
    bool found = false;
    const auto last = static_cast<std::size_t>(program.form1.lastpage);
    for (std::size_t page = 0; page <= last; ++page) {
        if (instr(ltrim(program.module1.pages.get(page)), query) == 0) continue;
        found = true;
        show_found_page(program, page, query, words);
        const Text question = U"是否继续查找，目前已经查到第" + number_text(page) + U"页。";
        if (ask(program, question, plain_title, Buttons::OKCancel) != Answer::OK) return;
    }
    if (found) tell(program, U"查寻完毕,再也没有符合条件的结果！", plain_title, Icon::Information);
}

void previous_page(Program& program)
{
    Form1& form1 = program.form1;
    if (!document_is_open(program) || !can_be_cut(program)) return;
    cut_pages(program);
    bring_up(form1, form1.RichTextBox1);
    if (form1.pageno >= 1) {
        show_page(program, page_in_box(program) - 1);
        if (form1.pageno == 0) tell_page(program, U"目前已到首页，第", U"页,\r\n请往右翻页，或在页面框中修改页数！");
    }
    form1.page_box().set_text(number_text(form1.pageno));
}

void next_page(Program& program)
{
    Form1& form1 = program.form1;
    const bool searches = form1.Option3.value();
    if (!document_is_open(program) || (!searches && !can_be_cut(program))) return;
    if (form1.page_box().text() == number_text(form1.lastpage)) {
        tell_page(program, U"开始阅读！这是第", U"页,\r\n如果要跳页，请在页面框中修改页数后，按下“▼”！");
        form1.page_box().set_text(U"-1");
    }
    if (searches) return search_pages(program);
    cut_pages(program);
    bring_up(form1, form1.RichTextBox1);
    show_page(program, page_in_box(program) + 1);
    form1.page_box().set_text(number_text(form1.pageno));
    if (form1.pageno > form1.lastpage)
        tell_page(program, U"目前已经超出页面范围，已经跳到第", U"空页,\r\n请往左翻页，或在页面框中修改页数！");
}

void go_to_page(Program& program)
{
    Form1& form1 = program.form1;
    form1.pageno = page_in_box(program);
    if (form1.pageno > form1.lastpage) return;
    show_page(program, form1.pageno);
    if (!form1.RichTextBox1.empty()) mark_query(program, page_match_colour);
}

} // namespace

void open_document(Program& program)
{
    Form1& form1 = program.form1;
    form1.dbresult = false;
    form1.lastpage = std::min(form1.lastpage, last_page_emptied);
    program.module1.pages.clear(0, static_cast<std::size_t>(form1.lastpage));
    form1.RichTextBox3.set_visible(false);
    form1.pageno = 0;
    try {
        const auto path = program.platform.dialogs.open_file(text_files);
        if (path && !path->empty()) read_and_cut(program, *path);
    } catch (const Failure& failure) { // no box tells of it
        program.notice = U"没有打开：" + failure.message();
    }
}

void Command2_Click(Program& program, int index)
{
    program.form1.RichTextBox1.set_selection_colour(0);
    switch (index) {
    case 0: previous_page(program); break;
    case 1: next_page(program); break;
    case 8: go_to_page(program); break;
    default: break;
    }
}

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

} // namespace tarvik
