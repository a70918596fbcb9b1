#include "reading/dictionary_lookup.h"

#include <algorithm>

namespace tarvik {

namespace {

// A query of blanks alone has no first character, which counts as code 0.
char32_t first_of(TextView query)
{
    return query.empty() ? U'\0' : lower(query[0]);
}

bool read_dictionary(Program& program, TextView file, TextView title)
{
    const Text path = installed(program, file);
    if (!program.platform.files.file_exists(path)) {
        tell(program, path + U"不存在！请将该词典文件复制到安装目录下。", title);
        return false;
    }
    program.form1.RichTextBox1.set_content(PaneText(load_document(program, path)));
    return true;
}

bool show_next_entry(Program& program, const Dictionary& dictionary)
{
    const bool shown =
        show_result(program, program.module1.*dictionary.results, program.form1.resultpos, dictionary.colour);
    program.form1.resultpos += 1;
    return shown;
}

void show_count(Program& program)
{
    program.form1.number_box().set_text(number_text(program.form1.resultcount));
}

} // namespace

std::optional<Text> dictionary_file(const Dictionary& dictionary, char32_t first)
{
    if (!dictionary.file.empty()) return Text(dictionary.file);
    if (first < U'a' || first > U'z') return std::nullopt;
    return U"牛津字典" + Text(1, upper(first)) + U".TXT";
}

const Dictionary& dictionary_for(const Program& program)
{
    return program.form1.Option1.value() ? chinese_dictionary : english_dictionary(first_of(query_text(program)));
}

bool find_entries(Program& program, const Dictionary& dictionary, TextView title)
{
    const Text query = lower(query_text(program));
    const auto file = dictionary_file(dictionary, first_of(query));
    if (file && !read_dictionary(program, *file, title)) return false;

    const Document document = program.form1.RichTextBox1.document();
    const TextView text = document.text();
    Occurrences matches(dictionary.letters_alike ? document.lowered() : text, query);
    Occurrences ends(text, dictionary.entry_end);
    std::array ends_before{Occurrences(text, dictionary.entry_end), Occurrences(text, other_entry_ends[0]),
                           Occurrences(text, other_entry_ends[1])};
    ResultWriter results(program, program.module1.*dictionary.results, document.buffer());
    std::size_t nearest = npos; // place behind an end: no match before it is at a head
    for (std::size_t match = matches.at_or_behind(dictionary.first_position - 1); match != npos;
         match = matches.at_or_behind(std::max(match + 1, nearest))) {
        const std::size_t window = match - dictionary.window;
        nearest = npos;
        for (Occurrences& end : ends_before)
            if (const std::size_t place = end.at_or_behind(window); place != npos)
                nearest = std::min(nearest, place + end.length());
        if (nearest > match) continue;
        const std::size_t before = position_within(ends_before[0], window, dictionary.window);
        const std::size_t end = position_within(ends, match, longest_entry);
        const auto begin = static_cast<std::ptrdiff_t>(match + before - dictionary.start_offset);
        if (end == 0) results.count();
        else if (!results.add(begin, match + end)) {
            tell_results_full(program, title);
            break;
        }
    }
    return true;
}

bool look_up(Program& program, const QueryEntry& entry)
{
    if (!has_query(program)) return false;
    const Dictionary& dictionary = dictionary_for(program);
    const bool is_chinese = &dictionary == &chinese_dictionary;
    const TextView title = is_chinese ? entry.no_result_title : entry.no_english_result_title;
    if (!find_entries(program, dictionary, title)) return false;
    if (!is_chinese) show_count(program);
    bool shown = show_next_entry(program, dictionary);
    if (!shown && &dictionary == &english_other_dictionary) {
        // What the file for other words lacks is looked for once more, in the pane that is empty by then.
        find_entries(program, english_letter_dictionary, title);
        show_count(program);
        shown = show_next_entry(program, english_letter_dictionary);
    }
    if (!shown) tell_no_result(program, title);
    if (is_chinese) show_count(program);
    return true;
}

} // namespace tarvik
