#include "reading/marking.h"

#include "platform/text/occurrences.h"

namespace tarvik {

MatchPlaces places_to_mark(TextView text, TextView needle)
{
    MatchPlaces places;
    Occurrences walk(text, needle);
    // The look goes on one character behind a match, so that one directly behind it is passed over.
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t place = walk.at_or_behind(from);
        places.last_found = place + 1; // nowhere is 0
        if (place == npos) break;
        if (place > 0) {
            places.marked.push_back(Position::at_offset(place));
            from = place + needle.size();
        }
        ++from;
    }
    return places;
}

std::vector<Position> mark_needle(Program& program, Colour colour, LetterCase letter_case)
{
    Form1& form1 = program.form1;
    Pane& pane = form1.RichTextBox1;
    if (pane.empty()) return {};
    const TextView text = letter_case == LetterCase::Alike ? pane.document().lowered() : pane.text();
    MatchPlaces places = places_to_mark(text, form1.needle);
    form1.matchpos = static_cast<std::int64_t>(places.last_found);
    if (places.marked.empty()) return {};

    const std::size_t length = form1.needle.size();
    std::vector<Mark> marks;
    marks.reserve(places.marked.size());
    for (const Position place : places.marked) marks.push_back({place, length, colour, match_font_size});
    pane.set_marks(std::move(marks));
    pane.select({places.marked.back(), length});
    pane.set_selection_colour(colour);
    pane.set_selection_font_size(match_font_size);
    return std::move(places.marked);
}

void mark_query(Program& program, Colour colour)
{
    program.form1.needle = lower(ltrim(program.form1.query_box().text()));
    mark_needle(program, colour, LetterCase::Alike);
}

} // namespace tarvik
