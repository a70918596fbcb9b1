#include "reading/queries.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarvik {

namespace {

/// Looks for the line ends of a text that end a sentence: "。" CR LF, "。" blank CR LF, "." CR LF and, for a look back
/// only, "!" CR LF. Places count from 0 and must not fall from call to call, so that any number of looks is linear in
/// the text; what lies far from all of them is not read.
class SentenceEndings {
public:
    explicit SentenceEndings(TextView text) : text_(text) {}

    /// Where the last ending that lies wholly before `place` begins, npos if there is none.
    std::size_t last_before(std::size_t place)
    {
        std::size_t end = place;
        while (end > read_back_ && !ends_at(end)) --end;
        read_back_ = place;
        return last_;
    }

    /// Where the piece around a match ends: with Enter at the first ending behind it, with the button at that of the
    /// last kind that there is. 0 if there is none near enough.
    std::size_t end_of_piece(std::size_t match, bool by_enter)
    {
        for (const std::size_t window : {2'000U, 40'000U}) {
            std::size_t first = npos, of_last_kind = 0;
            for (std::size_t kind = 0; kind < next_.size(); ++kind) {
                const std::size_t ending = first_within(kind, match, match + window);
                if (ending == npos) continue;
                first = std::min(first, ending + 3); // a stop and its line end, whatever the kind
                of_last_kind = ending + endings[kind].size();
            }
            if (of_last_kind > 0) return by_enter ? first : of_last_kind;
        }
        return 0;
    }

private:
    static constexpr std::array<std::u32string_view, 4> endings{U"。\r\n", U"。 \r\n", U".\r\n", U"!\r\n"};

    bool ends_at(std::size_t end)
    {
        if (text_[end - 1] != U'\n') return false;
        const auto* const found = std::ranges::find_if(endings, [&](TextView ending) {
            return end >= ending.size() && text_.substr(end - ending.size(), ending.size()) == ending;
        });
        if (found != endings.end()) last_ = end - found->size();
        return found != endings.end();
    }

    std::size_t first_within(std::size_t kind, std::size_t place, std::size_t end)
    {
        const std::size_t found = text_.substr(0, end).find(endings[kind], std::max(place, next_[kind]));
        next_[kind] = std::max(next_[kind], std::min(found, end - endings[kind].size() + 1));
        return found;
    }

    TextView text_;
    std::size_t read_back_ = 0, last_ = npos;
    std::array<std::size_t, 3> next_{}; ///< no ending of that kind begins between the latest place and here
};

bool occurs_three_times(TextView text, TextView query)
{
    Occurrences walk(text, query);
    walk.next();
    walk.next();
    return walk.next() != npos;
}

/// Cuts out the sentence around each match. Places count from 0. Gives false when there was no room for all pieces.
bool cut_sentences(Program& program, const QueryEntry& entry, const Document& document, TextView query)
{
    // A sentence that an earlier query left open waits for its end still, with what that query had found before it.
    bool& is_open = program.form1.cutopenfile;
    std::size_t& distance = program.form1.cutdistance; // from the start of the ending before a match to the match
    const TextView text = document.text();
    Occurrences matches(text, query);
    SentenceEndings endings(text);
    ResultWriter results(program, program.module1.filehits, document.buffer());
    bool in_later_sentence = is_open, occurs_often = false;
    for (std::size_t match = matches.next(); match != npos; match = matches.next()) {
        if (!is_open) {
            const std::size_t before = endings.last_before(match);
            in_later_sentence = is_open = before != npos;
            if (is_open) distance = match - before;
        }
        const std::size_t end = endings.end_of_piece(match, entry.by_enter);
        if (end == 0) {
            results.count();
            continue;
        }
        const auto begin = static_cast<std::ptrdiff_t>(match) - static_cast<std::ptrdiff_t>(distance) + 1;
        if (!results.add(in_later_sentence ? begin : 0, end)) return false;
        is_open = false;
        if (in_later_sentence) continue;
        occurs_often = occurs_often || occurs_three_times(text, query);
        if (!occurs_often) break;
    }
    return true;
}

/// How far behind a match its separator may end. The first, nearer look of 5,000 characters finds nothing else.
constexpr std::size_t far_window = 40'000;

TextView without_line_ends(TextView text)
{
    std::size_t size = text.size();
    while (size > 0 && (text[size - 1] == U'\n' || text[size - 1] == U'\r')) --size;
    return text.substr(0, size);
}

bool wants_query(Program& program, const QueryEntry& entry)
{
    Form1& form1 = program.form1;
    form1.resultpos = 0;
    const Answer answer = ask(program,
                              U"请在“查寻条件框”中输入要查寻的字符串；\r\n"
                              U"在“数目框”中输入隔离符，例如以段落标记来分割查寻的结果，则输入为“。”加上回车符。",
                              entry.question_title, Buttons::YesNo);
    if (answer != Answer::Yes) return false;
    const TextView separator = form1.number_box().text();
    if (!separator.empty() && !form1.query_box().text().empty() && !is_number(without_line_ends(separator)))
        return true;
    tell(program, U"查寻条件为空；或隔离符为空或数字。", entry.question_title);
    return false;
}

/// How many characters stand before `place` when blanks at the end are dropped.
std::size_t without_blanks_before(TextView text, std::size_t place)
{
    while (place > 0 && text[place - 1] == U' ') --place;
    return place;
}

/// Cuts out the piece around each match. Places count from 0. Gives false when there was no room for all pieces.
bool cut_pieces(Program& program, const Document& document, TextView query, TextView separator)
{
    const TextView text = document.lowered();
    const bool keeps_stop = separator.contains(U".") || separator.contains(U"。");
    Occurrences matches(text, query), separators(text, separator), passed(text, separator);
    std::size_t before = npos, next = passed.next(); // the last separator before a match, and the one behind that
    ResultWriter results(program, program.module1.hits, document.lowered_buffer());
    bool& cutopen = program.form1.cutopen;
    for (std::size_t match = matches.next(); match != npos && !cutopen; match = matches.next()) {
        const std::size_t end = without_blanks_before(text, match);
        while (next != npos && next + passed.length() <= end) before = std::exchange(next, passed.next());
        const bool is_first = before == npos;
        const std::size_t behind = position_within(separators, match, far_window);
        if (behind == 0) {
            results.count();
            cutopen = !is_first;
            continue;
        }
        // A piece that ends in a full stop takes its own along and leaves that of the piece before; any other takes the
        // separator before it and leaves the one behind it.
        const std::ptrdiff_t stop_and_line_end = keeps_stop ? static_cast<std::ptrdiff_t>(separator.size()) - 2 : 0;
        const std::ptrdiff_t begin = is_first ? 0 : static_cast<std::ptrdiff_t>(before) + stop_and_line_end;
        if (!results.add(begin, match + behind - (is_first || keeps_stop ? 0 : 1))) return false;
    }
    return true;
}

} // namespace

bool query_sentences(Program& program, const QueryEntry& entry)
{
    if (!has_query(program)) return false;
    Form1& form1 = program.form1;
    const Text query = query_text(program).str();
    const Document document = form1.RichTextBox2.document();
    form1.resultcount = 0;
    if (!document.text().contains(U"。") && !document.text().contains(U"."))
        tell(program, U"查寻的文件是数据库文件，需通过-esc-按键来查寻！");
    if (!cut_sentences(program, entry, document, query)) tell_results_full(program, entry.no_result_title);
    if (!show_result(program, program.module1.filehits, 0, query_match_colour))
        tell_no_result(program, entry.no_result_title);
    form1.number_box().set_text(number_text(form1.resultcount));
    return true;
}

bool query_between_separators(Program& program, const QueryEntry& entry)
{
    if (!wants_query(program, entry)) return false;
    Form1& form1 = program.form1;
    const Text query = lower(query_text(program));
    const Text separator = form1.number_box().text();
    const Document document = form1.RichTextBox2.document();
    if (!cut_pieces(program, document, query, separator)) tell_results_full(program, entry.no_result_title);
    const bool shown = show_result(program, program.module1.hits, form1.resultpos, query_match_colour);
    form1.cutopen = false;
    if (!shown) tell_no_result(program, entry.no_result_title);
    form1.resultpos += 1;
    form1.number_box().set_text(number_text(form1.resultcount));
    return true;
}

} // namespace tarvik
