#include "reading/dictionary_lookup.h"

#include "platform/text/occurrences.h"
#include "reading/queries.h"

#include <algorithm>
#include <array>

namespace tarvik {

const Dictionary chinese_dictionary{chinese_layout, &Module1::cnhits, chinese_match_colour};
const Dictionary english_letter_dictionary{english_letter_layout, &Module1::enhits, english_match_colour};
const Dictionary english_other_dictionary{english_other_layout, &Module1::zhhits, english_match_colour};

namespace {

/// Finds the entries of a text whose heads hold the query. Places count from 0.
class EntryFinder {
public:
    EntryFinder(Program& program, const Dictionary& dictionary, const Document& document, TextView query)
        : layout_(dictionary.layout), matches_(layout_.letters_alike ? document.lowered() : document.text(), query),
          ends_before_{Occurrences(document.text(), layout_.entry_end),
                       Occurrences(document.text(), other_entry_ends[0]),
                       Occurrences(document.text(), other_entry_ends[1])},
          end_behind_(document.text(), layout_.entry_end),
          results_(program, program.module1.*dictionary.results, document.buffer())
    {
    }

    /// Gives false when there was no room for all entries.
    bool run()
    {
        std::size_t match = matches_.at_or_behind(layout_.first_position - 1);
        while (match != npos) {
            const std::size_t window = match - layout_.window;
            std::array<std::size_t, 3> behind_ends{npos, npos, npos};
            for (std::size_t i = 0; i < behind_ends.size(); ++i) {
                const std::size_t end = ends_before_[i].at_or_behind(window);
                if (end != npos) behind_ends[i] = end + ends_before_[i].length();
            }
            const std::size_t nearest = std::ranges::min(behind_ends);
            if (nearest > match) { // not at a head, and neither is any match before that end
                match = nearest == npos ? npos : matches_.at_or_behind(nearest);
                continue;
            }
            const bool own_end = behind_ends[0] <= match;
            if (!take(match, own_end ? behind_ends[0] - layout_.entry_end.size() - window + 1 : 0)) return false;
            match = matches_.at_or_behind(match + 1);
        }
        return true;
    }

private:
    bool take(std::size_t match, std::size_t end_in_window)
    {
        const std::size_t behind = end_behind_.at_or_behind(match);
        if (behind == npos || behind + end_behind_.length() > match + longest_entry) {
            results_.count();
            return true;
        }
        const auto begin =
            static_cast<std::ptrdiff_t>(match + end_in_window) - static_cast<std::ptrdiff_t>(layout_.start_offset);
        return results_.add(begin, behind + 1);
    }

    DictionaryLayout layout_;
    Occurrences matches_;
    std::array<Occurrences, 3> ends_before_; ///< the layout's own first
    Occurrences end_behind_;
    ResultWriter results_;
};

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

void find_entries(Program& program, const Dictionary& dictionary, TextView query, TextView title)
{
    const Document document = program.form1.RichTextBox1.document();
    if (!EntryFinder(program, dictionary, document, query).run()) tell_results_full(program, title);
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

bool look_up_chinese(Program& program, const QueryEntry& entry)
{
    const TextView title = entry.no_result_title;
    if (!read_dictionary(program, chinese_file, title)) return false;
    find_entries(program, chinese_dictionary, lower(query_text(program)), title);
    if (!show_next_entry(program, chinese_dictionary)) tell_no_result(program, title);
    show_count(program);
    return true;
}

bool look_up_english(Program& program, const QueryEntry& entry)
{
    const Text query = lower(query_text(program));
    const TextView title = entry.no_english_result_title;
    const auto look = [&](const Dictionary& dictionary) {
        find_entries(program, dictionary, query, title);
        show_count(program);
        return show_next_entry(program, dictionary);
    };
    const bool other = &english_dictionary_for(query) == &english_other_dictionary;
    const auto file = other ? std::optional(Text(english_other_file)) : english_letter_file(query.front());
    if (file && !read_dictionary(program, *file, title)) return false;
    // What the file for other words lacks is looked for once more, in the pane that is empty by then.
    if ((other && look(english_other_dictionary)) || look(english_letter_dictionary)) return true;
    tell_no_result(program, title);
    return true;
}

} // namespace

const Dictionary& english_dictionary_for(TextView query)
{
    // A query of blanks alone has no first character, which counts as code 0.
    const bool other = query.empty() || belongs_to_other_file(query[0]);
    return other ? english_other_dictionary : english_letter_dictionary;
}

bool look_up(Program& program, const QueryEntry& entry)
{
    if (!has_query(program)) return false;
    return program.form1.Option1.value() ? look_up_chinese(program, entry) : look_up_english(program, entry);
}

bool find_english_entries(Program& program, const QueryEntry& entry)
{
    const Text query = lower(query_text(program));
    const TextView title = entry.no_english_result_title;
    const auto file = english_letter_file(query.front());
    if (file && !read_dictionary(program, *file, title)) return false;
    find_entries(program, english_letter_dictionary, query, title);
    return true;
}

} // namespace tarvik
