#include "reading/queries.h"

#include <algorithm>
#include <vector>

namespace tarvik {

namespace {

/// The line ends of a text that end a sentence. Places count from 0 and must not fall from call to call, so that any
/// number of looks is linear in the text.
class SentenceEndings {
public:
    explicit SentenceEndings(TextView text)
    {
        for (const TextView ending : {U"。\r\n", U"。 \r\n", U".\r\n"}) behind_.emplace_back(text, ending);
        for (const TextView ending : {U"。\r\n", U"。 \r\n", U".\r\n", U"!\r\n"}) before_.emplace_back(text, ending);
    }

    /// How far before `place` the last ending that lies wholly before it begins; 0 if there is none.
    std::size_t distance_back(std::size_t place)
    {
        std::size_t distance = 0;
        for (LastOccurrence& ending : before_)
            if (const std::size_t found = ending.within(place); found != npos)
                distance = distance == 0 ? place - found : std::min(distance, place - found);
        return distance;
    }

    /// Where the piece around a match ends: with Enter at the first ending behind it, with the button at that of the
    /// last kind that there is. 0 if there is none near enough.
    std::size_t end_of_piece(std::size_t match, bool by_enter)
    {
        for (const std::size_t window : {2'000U, 40'000U}) {
            std::size_t first = npos, last_kind = 0;
            for (Occurrences& ending : behind_) {
                const std::size_t position = position_within(ending, match, window);
                if (position == 0) continue;
                first = std::min(first, match + position + 2); // a stop and its line end, whatever the kind
                last_kind = match + position + ending.length() - 1;
            }
            if (last_kind > 0) return by_enter ? first : last_kind;
        }
        return 0;
    }

private:
    std::vector<Occurrences> behind_;
    std::vector<LastOccurrence> before_;
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
            const std::size_t back = endings.distance_back(match);
            in_later_sentence = is_open = back > 0;
            if (is_open) distance = back;
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

} // namespace tarvik
