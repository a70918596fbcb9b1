#include "reading/queries.h"

#include "platform/text/occurrences.h"

#include <algorithm>
#include <array>

namespace tarvik {

namespace {

/// Walks over the line ends of a text that end a sentence: "。" CR LF, "。" blank CR LF, "." CR LF and, for a look back
/// only, "!" CR LF. Places count from 0 and must not fall from call to call, so that any number of looks is linear in
/// the text.
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

    /// Positions, counted from 1 at the place asked for, of the first ending of each kind; 0 for none.
    struct Positions {
        std::size_t stop = 0, stop_blank = 0, full_stop = 0;
        bool any() const { return stop > 0 || stop_blank > 0 || full_stop > 0; }
    };
    /// The endings within 2,000 characters from `place`; if there are none, those within 40,000.
    Positions behind(std::size_t place)
    {
        const Positions near = within(place, 2'000);
        return near.any() ? near : within(place, 40'000);
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

    Positions within(std::size_t place, std::size_t window)
    {
        const auto first = [&](std::size_t kind) -> std::size_t {
            const std::size_t found = text_.substr(0, place + window).find(endings[kind], std::max(place, next_[kind]));
            next_[kind] = std::max(next_[kind], std::min(found, place + window - endings[kind].size() + 1));
            return found == npos ? 0 : found - place + 1;
        };
        return {first(0), first(1), first(2)};
    }

    TextView text_;
    std::size_t read_back_ = 0, last_ = npos;
    std::array<std::size_t, 3> next_{}; ///< no ending of that kind begins between the latest place and here
};

/// With Enter a piece ends at the first ending behind the match; with the button the kinds have an order of their own.
SentenceEndings::Positions first_only(const SentenceEndings::Positions& found)
{
    const auto first = static_cast<std::size_t>(min3to1(
        static_cast<double>(found.stop), static_cast<double>(found.stop_blank), static_cast<double>(found.full_stop)));
    return {first, first, first};
}

/// Where a piece ends, for a match at `match`; of several kinds the last one decides.
std::size_t end_of_piece(std::size_t match, const SentenceEndings::Positions& found)
{
    if (found.full_stop > 0) return match + found.full_stop + 2;
    if (found.stop_blank > 0) return match + found.stop_blank + 3;
    return match + found.stop + 2;
}

bool occurs_three_times(TextView text, TextView query)
{
    Occurrences walk(text, query);
    walk.next();
    walk.next();
    return walk.next() != npos;
}

/// Cuts out the sentence around each match. Places count from 0.
class SentenceCutter {
public:
    SentenceCutter(Program& program, const QueryEntry& entry, const Document& document, TextView query)
        : entry_(entry), cutopenfile_(program.form1.cutopenfile), distance_(program.form1.cutdistance),
          text_(document.text()), query_(query), matches_(text_, query), endings_(text_),
          results_(program, program.module1.filehits, document.buffer()), in_later_sentence_(cutopenfile_)
    {
    }

    /// Gives false when there was no room for all pieces.
    bool run()
    {
        for (std::size_t match = matches_.next(); match != npos; match = matches_.next()) {
            if (!cutopenfile_) look_back(match);
            SentenceEndings::Positions behind = endings_.behind(match);
            if (!behind.any()) {
                results_.count();
                continue;
            }
            if (entry_.by_enter) behind = first_only(behind);
            if (!cut(match, end_of_piece(match, behind))) return false;
            if (!in_later_sentence_ && !occurs_often()) break;
        }
        return true;
    }

private:
    void look_back(std::size_t match)
    {
        const std::size_t before = endings_.last_before(match);
        in_later_sentence_ = cutopenfile_ = before != npos;
        if (in_later_sentence_) distance_ = match - before;
    }

    bool cut(std::size_t match, std::size_t end)
    {
        if (!in_later_sentence_) return results_.add(0, end);
        // While a sentence waits for its end the distance of the match that opened it stands.
        const std::ptrdiff_t begin = static_cast<std::ptrdiff_t>(match) - static_cast<std::ptrdiff_t>(distance_) + 1;
        if (!results_.add(begin, end)) return false;
        cutopenfile_ = false;
        return true;
    }

    bool occurs_often()
    {
        if (!often_) often_ = occurs_three_times(text_, query_);
        return *often_;
    }

    const QueryEntry& entry_;
    // A sentence that an earlier query left open waits for its end still, with what that query had found before it.
    bool& cutopenfile_;
    std::size_t& distance_; ///< from the start of the ending before a match to the match
    TextView text_;
    TextView query_;
    Occurrences matches_;
    SentenceEndings endings_;
    ResultWriter results_;
    bool in_later_sentence_;
    std::optional<bool> often_;
};

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
    if (!SentenceCutter(program, entry, document, query).run()) tell_results_full(program, entry.no_result_title);
    if (!show_result(program, program.module1.filehits, 0, query_match_colour))
        tell_no_result(program, entry.no_result_title);
    form1.number_box().set_text(number_text(form1.resultcount));
    return true;
}

} // namespace tarvik
