#include "reading/queries.h"

#include "reading/dictionary_lookup.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::size_t last_emptied = 1000;

struct Walk {
    const TextArray& results;
    Colour colour;
};

Walk active_walk(const Program& program)
{
    const Form1& form1 = program.form1;
    const Module1& module1 = program.module1;
    if (form1.Option3.value()) return {module1.filehits, query_match_colour};
    if (!form1.Option1.value() && !form1.Option2.value()) return {module1.hits, query_match_colour};
    const Dictionary& dictionary = dictionary_for(program);
    return {module1.*dictionary.results, dictionary.colour};
}

bool show_or_tell(Program& program, const Walk& walk, std::int64_t index)
{
    if (show_result(program, walk.results, index, walk.colour)) return true;
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

void show_position(Program& program)
{
    program.form1.number_box().set_text(number_text(program.form1.resultpos));
}

} // namespace

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
    const bool shown = show_or_tell(program, active_walk(program), form1.resultpos);
    if (shown || !english) form1.resultpos += 1;
    show_position(program);
    return true;
}

bool show_previous_result(Program& program)
{
    Form1& form1 = program.form1;
    bring_up(form1, form1.RichTextBox1);
    if (form1.Option2.value() && !has_query(program)) return false;
    if (form1.resultpos <= 0) return true;
    if (form1.Option2.value() && !entries_are_found(program)) return false;
    show_or_tell(program, active_walk(program), form1.resultpos - 1);
    form1.resultpos -= 1;
    show_position(program);
    return true;
}

} // namespace tarvik
