#include "reading/queries.h"

namespace tarvik {

namespace {

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
    Occurrences matches(text, query), separators(text, separator);
    LastOccurrence separators_before(text, separator);
    ResultWriter results(program, program.module1.hits, document.lowered_buffer());
    bool& cutopen = program.form1.cutopen;
    for (std::size_t match = matches.next(); match != npos && !cutopen; match = matches.next()) {
        const std::size_t before = separators_before.within(without_blanks_before(text, match));
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
