#include "reading/queries.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::size_t last_emptied = 1000;
constexpr int match_font_size = 32;

} // namespace

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

std::vector<Position> mark_needle(Program& program, TextView text, Colour colour)
{
    Form1& form1 = program.form1;
    Pane& pane = form1.RichTextBox1;
    if (pane.empty()) return {};
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
    mark_needle(program, program.form1.RichTextBox1.document().lowered(), colour);
}

void tell_no_result(Program& program, TextView title)
{
    tell(program, U"查寻结果为空！", title);
}

bool has_query(Program& program)
{
    if (!program.form1.query_box().text().empty()) return true;
    tell(program, U"查寻条件为空", plain_title);
    return false;
}

TextView query_text(const Program& program)
{
    return ltrim(program.form1.query_box().text());
}

ResultWriter::ResultWriter(Program& program, TextArray& results, const SharedBuffer& buffer)
    : program_(program), results_(results), buffer_(buffer)
{
    program_.form1.resultcount = 0;
    results_.clear(0, last_emptied);
}

void ResultWriter::count()
{
    if (program_.form1.resultcount++ == 0) bring_up(program_.form1, program_.form1.RichTextBox1);
}

bool ResultWriter::add(std::ptrdiff_t begin, std::size_t end)
{
    if (next_ > results_.last()) return false;
    count();
    const auto first = static_cast<std::size_t>(std::max<std::ptrdiff_t>(begin, 0));
    const std::size_t length = end > first ? end - first : 0;
    results_.set(next_++, buffer_->view().substr(first, length), buffer_);
    return true;
}

void tell_results_full(Program& program, TextView title)
{
    tell(program, U"查寻结果超出软件所设定的数组范围，只保留已经查到的结果！", title);
}

bool show_result(Program& program, const TextArray& results, std::int64_t index, Colour colour)
{
    Pane& pane = program.form1.RichTextBox1;
    pane.set_text(results.get(static_cast<std::size_t>(index)));
    if (pane.empty()) return false;
    mark_query(program, colour);
    return true;
}

} // namespace tarvik
