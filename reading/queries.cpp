#include "reading/queries.h"
#include "reading/reading.h"

#include "reading/dictionary_lookup.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::size_t last_emptied = 1000;
constexpr int match_font_size = 32;

/// Shows a result of the active mode, or says that there is none.
bool show_or_tell(Program& program, std::int64_t index)
{
    const bool is_entry = program.form1.Option1.value() || program.form1.Option2.value();
    TextArray Module1::*const of_text = program.form1.Option3.value() ? &Module1::filehits : &Module1::hits;
    const auto results = is_entry ? dictionary_for(program).results : of_text;
    const Colour colour = is_entry ? dictionary_for(program).colour : query_match_colour;
    if (show_result(program, program.module1.*results, index, colour)) return true;
    tell_no_result(program, query_button.no_result_title);
    return false;
}

/// The entries of a letter file are found anew at each step.
bool entries_are_found(Program& program)
{
    const Dictionary& dictionary = dictionary_for(program);
    return &dictionary != &english_letter_dictionary ||
           find_entries(program, dictionary, query_button.no_english_result_title);
}

// The buttons "→" and "←" show the next or the previous result of the active mode. They give whether they ran to
// their end.

bool show_next_result(Program& program)
{
    Form1& form1 = program.form1;
    bring_up(form1, form1.RichTextBox1);
    const bool english = form1.Option2.value();
    if (english) {
        if (!has_query(program)) return false;
        form1.resultcount = 0;
        if (!entries_are_found(program)) return false;
    }
    const bool shown = show_or_tell(program, form1.resultpos);
    if (shown || !english) form1.resultpos += 1;
    form1.number_box().set_text(number_text(form1.resultpos));
    return true;
}

bool show_previous_result(Program& program)
{
    Form1& form1 = program.form1;
    bring_up(form1, form1.RichTextBox1);
    if (form1.Option2.value() && !has_query(program)) return false;
    if (form1.resultpos <= 0) return true;
    if (form1.Option2.value() && !entries_are_found(program)) return false;
    show_or_tell(program, form1.resultpos - 1);
    form1.resultpos -= 1;
    form1.number_box().set_text(number_text(form1.resultpos));
    return true;
}

bool run_query(Program& program, const QueryEntry& entry)
{
    Form1& form1 = program.form1;
    form1.RichTextBox3.set_visible(false);
    form1.RichTextBox1.set_selection_colour(0);
    if (form1.Option3.value()) return query_sentences(program, entry);
    if (form1.Option1.value() || form1.Option2.value()) return look_up(program, entry);
    return query_between_separators(program, entry);
}

/// A long result is shown from its golden section on.
void move_caret_to_golden_section(Pane& pane)
{
    pane.set_selection_colour(query_match_colour);
    const std::size_t characters_before = pane.text().size() * 618 / 1000;
    pane.select({Position::at_offset(characters_before), 0});
}

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

void Command1_Click(Program& program, int index)
{
    bool result_shown = false;
    switch (index) {
    case 0: open_document(program); break;
    case 1: result_shown = run_query(program, query_button); break;
    case 2: result_shown = show_next_result(program); break;
    case 3: result_shown = show_previous_result(program); break;
    case 4: save_results(program); break;
    default: break;
    }
    if (result_shown) move_caret_to_golden_section(program.form1.RichTextBox1);
}

void query_by_enter(Program& program)
{
    run_query(program, query_enter);
}

} // namespace tarvik
