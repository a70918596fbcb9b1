#include "scripts/script.h"

#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <span>
#include <utility>

namespace tarvik {

namespace {

bool is_blank(char32_t character)
{
    return character == U' ' || character == U'\t';
}

// Letters behind a backslash, and what they mean. The last is read alone, the one ahead of it is no JSON.
constexpr std::pair<char, char> escapes[] = {{'r', '\r'}, {'n', '\n'}, {'t', '\t'},   {'"', '"'}, {'\\', '\\'},
                                             {'b', '\b'}, {'f', '\f'}, {'e', '\x1b'}, {'/', '/'}};
constexpr std::size_t json_escapes = 7, word_escapes = 8;

class LineReader {
public:
    LineReader(TextView line, const Holes& holes) : line_(line), holes_(holes) {}

    std::vector<Word> words()
    {
        std::vector<Word> words;
        for (skip_blanks(); !at_end(); skip_blanks()) {
            if (words.empty() && line_[at_] == U'#') break;
            words.push_back(line_[at_] == U'"' ? quoted_word() : bare_word());
        }
        return words;
    }

private:
    bool at_end() const { return at_ == line_.size(); }
    void skip_blanks()
    {
        while (!at_end() && is_blank(line_[at_])) ++at_;
    }

    Word bare_word()
    {
        const std::size_t start = at_;
        while (!at_end() && !is_blank(line_[at_])) ++at_;
        return {line_.substr(start, at_ - start).str(), false};
    }

    Word quoted_word()
    {
        Word word{{}, true};
        for (++at_; next() != U'"';) {
            if (const Text* filled = hole()) {
                word.text += *filled;
                continue;
            }
            const char32_t character = take();
            word.text += character == U'\\' ? escaped() : character;
        }
        ++at_;
        if (!at_end() && !is_blank(line_[at_])) throw ScriptFailure("a blank is missing behind a closing quote");
        return word;
    }

    // The value of the hole that begins here, which is passed; nothing where none does.
    const Text* hole()
    {
        if (holes_.empty() || next() != U'{') return nullptr;
        std::size_t end = at_;
        while (end < line_.size() && line_[end] != U'}') ++end;
        const auto found = holes_.find(line_.substr(at_ + 1, end - at_ - 1).str());
        if (found == holes_.end()) return nullptr;
        at_ = end + 1;
        return &found->second;
    }

    char32_t next() const
    {
        if (at_end()) throw ScriptFailure("a quote is not closed");
        return line_[at_];
    }
    char32_t take()
    {
        const char32_t character = next();
        ++at_;
        return character;
    }

    char32_t escaped()
    {
        const char32_t letter = take();
        if (letter == U'u') return code_point();
        for (const auto& [name, character] : escapes)
            if (static_cast<char32_t>(name) == letter) return static_cast<char32_t>(character);
        throw ScriptFailure("unknown escape \\" + to_utf8(Text(1, letter)));
    }

    // A character outside the basic plane is written as two escapes, as in JSON.
    char32_t code_point()
    {
        const char32_t first = four_digits();
        const bool pair = is_high_surrogate(first) && line_.substr(at_, 2) == TextView(U"\\u");
        if (!pair) return first;
        const std::size_t before = at_;
        at_ += 2;
        const char32_t second = four_digits();
        if (is_low_surrogate(second)) return joined(first, second);
        at_ = before;
        return first;
    }

    char32_t four_digits()
    {
        char32_t value = 0;
        for (int i = 0; i < 4; ++i) {
            const std::size_t digit = std::u32string_view(U"0123456789abcdef").find(lower(take()));
            if (digit == std::u32string_view::npos) throw ScriptFailure("\\u is followed by four hexadecimal digits");
            value = value * 16 + static_cast<char32_t>(digit);
        }
        return value;
    }

    TextView line_;
    const Holes& holes_;
    std::size_t at_ = 0;
};

// `count` of the escapes are written.
std::string quoted(TextView text, std::size_t count)
{
    std::string json = "\"";
    for (const char character : to_utf8(text)) {
        const auto letters = std::span(escapes).first(count);
        const auto letter = std::ranges::find(letters, character, &std::pair<char, char>::second);
        if (letter != letters.end()) (json += '\\') += letter->first;
        else if (static_cast<unsigned char>(character) >= 0x20) json += character;
        else {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(character));
            json += escape.data();
        }
    }
    return json += '"';
}

} // namespace

std::vector<Word> split_line(std::string_view line, const Holes& holes)
{
    if (line.ends_with('\r')) line.remove_suffix(1);
    const Text text = from_utf8(line);
    return LineReader(text, holes).words();
}

std::string json_string(TextView text)
{
    return quoted(text, json_escapes);
}

std::string quoted_word(TextView text)
{
    std::string word = quoted(text, word_escapes);
    for (std::size_t at = 0; (at = word.find('{', at)) != std::string::npos;) word.replace(at, 1, "\\u007b");
    return word;
}

} // namespace tarvik
