#pragma once

#include "mainwindow/mainwindow.h"
#include "platform/text/text_search.h"

#include <vector>

/// The queries of the documents: what they start from, where their results go, and how the needle is marked in these.
namespace tarvik {

/// A query starts with its button or with Enter. Both do the same work; what they tell has different titles.
struct QueryEntry {
    bool by_enter;
    std::u32string_view question_title;
    std::u32string_view no_result_title;
    std::u32string_view no_english_result_title; ///< of a lookup in the English dictionary
};

inline constexpr QueryEntry query_button{false, U"Tarvik 计算 之查寻", U"Tarvik 计算 之 查寻", U"Tarvik 计算 之 查寻"};
inline constexpr QueryEntry query_enter{true, application_title, application_title, U"Tarvik 计算 查寻"};

/// The title of the boxes that bear the same one whatever the entry.
inline constexpr std::u32string_view plain_title = U"Tarvik";

/// The colours in which matches are shown, one for each kind of result.
inline constexpr Colour page_match_colour = 44564;
inline constexpr Colour query_match_colour = 44390;
inline constexpr Colour chinese_match_colour = 173;
inline constexpr Colour english_match_colour = 11363942;

/// The matches that are marked in a text.
struct MatchPlaces {
    std::vector<Position> marked;
    std::size_t last_found = 0; ///< position where the last look for a match found one, counted from 1; 0 if it did not
};

/// A match at the first character is not marked, and neither is one that begins directly behind a marked one. Linear in
/// the text.
MatchPlaces places_to_mark(TextView text, TextView needle);

/// Marks the matches of the needle in the result pane, whose text is searched as it is given: in small letters, or as
/// it stands. The last match is left selected. An empty pane stays as it is. Gives the places that were marked.
std::vector<Position> mark_needle(Program& program, TextView text, Colour colour);

/// Takes the query box, without leading blanks and in lower case, as the needle and marks it, letters alike.
void mark_query(Program& program, Colour colour);

/// "查寻结果为空！"
void tell_no_result(Program& program, TextView title);

/// Whether the query box holds anything; tells the user when it does not.
bool has_query(Program& program);

/// The query box without its leading blanks.
TextView query_text(const Program& program);

/// Where the first occurrence among the `count` characters from `from` begins, counted from 1 there; 0 if there is
/// none. `from` counts from 0 and must not fall from call to call.
inline std::size_t position_within(Occurrences& occurrences, std::size_t from, std::size_t count)
{
    const std::size_t place = occurrences.at_or_behind(from);
    return place != npos && place + occurrences.length() <= from + count ? place - from + 1 : 0;
}

/// Fills the result array of one kind, from index 0 on, with pieces of a buffer that is not copied.
class ResultWriter {
public:
    /// Empties the first 1001 results; those behind stay.
    ResultWriter(Program& program, TextArray& results, const SharedBuffer& buffer);

    /// Counts a match and brings up the result pane.
    void count();
    /// Counts a match and stores its piece, from `begin` up to but not including `end`, both from 0. A `begin` before
    /// the text means its beginning. Gives false when the array has no room left; the match is not counted then.
    bool add(std::ptrdiff_t begin, std::size_t end);

private:
    Program& program_;
    TextArray& results_;
    SharedBuffer buffer_;
    std::size_t next_ = 0;
};

/// Tells that the array of results is full and that those found so far are kept.
void tell_results_full(Program& program, TextView title);

/// Shows the result with this index in the result pane and marks the query in it. Gives whether there is one.
bool show_result(Program& program, const TextArray& results, std::int64_t index, Colour colour);

/// The query with no option selected: the pieces between separators that the user names in the number box. Gives
/// whether it ran to its end.
bool query_between_separators(Program& program, const QueryEntry& entry);

/// The query "查寻文件": the sentences, with fixed endings, around each match. Gives whether it ran to its end.
bool query_sentences(Program& program, const QueryEntry& entry);

} // namespace tarvik
