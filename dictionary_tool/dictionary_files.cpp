#include "dictionary_tool/dictionary_files.h"

#include "platform/text/code_page.h"

#include <algorithm>
#include <vector>

namespace tarvik {

namespace {

constexpr std::u32string_view line_end = U"\r\n";
/// What the number of a part and the padding may take of an entry.
constexpr std::size_t reserve = 300;
constexpr std::size_t longest_head = 1000;

/// An entry of a letter file shows from its second character on, and a match at its very beginning is not marked: two
/// blanks keep the head word whole and marked.
TextView indent(const Dictionary& layout)
{
    return layout.letters_alike ? U"  " : U"";
}

bool is_control(char32_t character)
{
    return character < U' ' || character == 0x7f;
}

/// The lines of a text without blanks at their ends. A line whose end would pass for the end of an entry gets one.
std::vector<Text> lines_of(TextView text)
{
    constexpr std::u32string_view stops = U".。?!";
    std::vector<Text> lines(1);
    for (const char32_t character : text.str()) {
        if (character == U'\n') lines.emplace_back();
        else if (character == U'\t') lines.back() += U' ';
        else if (!is_control(character)) lines.back() += character;
    }
    for (Text& line : lines) {
        line = rtrim(line).str();
        if (!line.empty() && stops.find(line.back()) != npos) line += U' ';
    }
    while (!lines.empty() && trim(lines.back()).empty()) lines.pop_back();
    const auto first = std::ranges::find_if(lines, [](const Text& line) { return !trim(line).empty(); });
    lines.erase(lines.begin(), first);
    return lines;
}

/// Cuts off at most `room` characters, behind a blank if there is one in the latter half.
Text cut_front(Text& rest, std::size_t room)
{
    std::size_t end = rest.size();
    if (end > room) {
        end = room;
        const std::size_t blank = rest.find_last_of(U" \n", room - 1);
        if (blank != Text::npos && blank > room / 2) end = blank + 1;
        // A line end is not torn.
        if (rest[end - 1] == U'\r') --end;
    }
    Text front = rest.substr(0, end);
    rest.erase(0, end);
    return front;
}

/// An entry from its line's start to the line end behind it. It is long enough that the window before the next head
/// word holds no other end than its own.
Text entry_text(const Dictionary& layout, TextView head, TextView body)
{
    // The blank keeps a head word that ends in a full stop from ending its entry.
    Text text = indent(layout).str() + head + U" " + line_end + body;
    const char32_t stop = layout.entry_end.front();
    while (!text.empty() &&
           (text.back() == U' ' || text.back() == U'\r' || text.back() == U'\n' || text.back() == stop))
        text.pop_back();
    const std::size_t ends = 2 * layout.entry_end.size();
    const std::size_t least = layout.window + 1 - std::min(layout.window, ends + indent(layout).size());
    if (text.size() < least) text.resize(least, U' ');
    return text + TextView(layout.entry_end);
}

} // namespace

bool DictionaryFiles::add(const SourceEntry& entry)
{
    Text head;
    for (const Text& line : lines_of(entry.head)) head += line;
    head = trim(head).str();
    if (head.empty() || head.size() > longest_head) return false;

    const char32_t first = lower(head.front());
    const Dictionary& english = english_dictionary(first);
    const bool is_served = use_ == DictionaryUse::English && dictionary_file(english, first);
    const Dictionary& layout = is_served ? english : chinese_dictionary;
    std::string& bytes = files_[*dictionary_file(layout, first)];
    if (bytes.empty()) bytes = opening(layout);
    std::vector<Text> lines = lines_of(entry.body);
    if (!lines.empty() && lower(trim(lines.front())) == lower(head)) lines.erase(lines.begin());
    if (!layout.letters_alike && lower(head) != head) {
        lines.insert(lines.begin(), head + U' ');
        head = lower(head);
    }
    Text body;
    for (const Text& line : lines) body += (body.empty() ? U"" : Text(line_end)) + line;
    const std::size_t room = longest_entry - reserve - head.size();
    encode_to(entry_text(layout, head, cut_front(body, room)), bytes);
    for (int part = 2; !body.empty(); ++part) {
        const Text numbered = head + U" (" + number_text(part) + U")";
        encode_to(entry_text(layout, numbered, cut_front(body, room)), bytes);
    }
    return true;
}

// The first entry of a file cannot be found by its head, so it is one that nobody looks for. Its Chinese characters
// also make the file's encoding known.
std::string DictionaryFiles::opening(const Dictionary& layout) const
{
    Text title = U"词典：";
    for (const Text& line : lines_of(name_)) title += line;
    title.resize(std::max(title.size(), layout.first_position), U' ');
    return encode(title + TextView(layout.entry_end));
}

} // namespace tarvik
