#include "playback/script.h"

#include "platform/text/utf8.h"

#include <optional>
#include <utility>

namespace tarvik {

namespace {

bool is_blank(char32_t character)
{
    return character == U' ' || character == U'\t';
}

constexpr std::pair<char32_t, char32_t> escapes[] = {
    {U'r', U'\r'}, {U'n', U'\n'}, {U't', U'\t'}, {U'"', U'"'},    {U'\\', U'\\'},
    {U'/', U'/'},  {U'b', U'\b'}, {U'f', U'\f'}, {U'e', U'\x1b'},
};

class LineReader {
public:
    explicit LineReader(TextView line) : line_(line) {}

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
            const char32_t character = take();
            word.text += character == U'\\' ? escaped() : character;
        }
        ++at_;
        if (!at_end() && !is_blank(line_[at_])) throw ScriptFailure("a blank is missing behind a closing quote");
        return word;
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
            if (name == letter) return character;
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
    std::size_t at_ = 0;
};

} // namespace

std::vector<Word> split_line(std::string_view line)
{
    if (line.ends_with('\r')) line.remove_suffix(1);
    const Text text = from_utf8(line);
    return LineReader(text).words();
}

} // namespace tarvik
