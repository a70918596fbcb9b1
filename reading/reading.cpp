#include "reading/reading.h"

#include "reading/dictionary_lookup.h"
#include "reading/queries.h"

namespace tarvik {

namespace {

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
