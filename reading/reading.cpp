#include "reading/reading.h"

#include "reading/dictionary_lookup.h"
#include "reading/marking.h"
#include "reading/queries.h"

namespace tarvik {

namespace {

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

void query_by_enter(Program& program)
{
    run_query(program, query_enter);
}

} // namespace tarvik
