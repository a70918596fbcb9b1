#include "engines/spreadsheets/calculation/number_format.h"

#include "engines/spreadsheets/calculation/functions.h"

#include <algorithm>
#include <array>

namespace tarvik::calculation {

namespace {

using Kind = FormatPiece::Kind;

constexpr std::array<std::u32string_view, 10> colours{U"black", U"blue",  U"cyan",   U"green", U"magenta",
                                                      U"red",   U"white", U"yellow", U"color", U"colour"};
constexpr std::array<std::pair<std::u32string_view, Kind>, 11> words{{{U"am/pm", Kind::HalfDay},
                                                                      {U"a/p", Kind::HalfDay},
                                                                      {U"上午/下午", Kind::HalfDay},
                                                                      {U"general", Kind::General},
                                                                      {U"0", Kind::Digit},
                                                                      {U"#", Kind::Digit},
                                                                      {U"?", Kind::Digit},
                                                                      {U".", Kind::Point},
                                                                      {U",", Kind::Comma},
                                                                      {U"%", Kind::Percent},
                                                                      {U"@", Kind::Text}}};

class FormatParser {
public:
    explicit FormatParser(TextView format) : format_(format), lowered_(lower(format)) {}

    std::vector<FormatSection> run()
    {
        while (at_ < format_.size()) take();
        return std::move(sections_);
    }

private:
    std::vector<FormatPiece>& pieces() { return sections_.back().pieces; }
    void add(Kind kind, Text text) { pieces().push_back({kind, std::move(text)}); }

    void take()
    {
        const TextView rest = TextView(lowered_).substr(at_);
        const auto* const word =
            std::ranges::find_if(words, [&](const auto& entry) { return rest.starts_with(entry.first); });
        if (word != words.end() && !(word->second == Kind::Point && take_fraction())) {
            add(word->second, format_.substr(at_, word->first.size()).str());
            at_ += word->first.size();
            return;
        }
        if (word != words.end()) return;
        switch (format_[at_]) {
        case U';': sections_.emplace_back(); break;
        case U'"': return take_quoted();
        case U'[': return take_brackets();
        case U'\\': add(Kind::Literal, format_.substr(++at_, 1).str()); break;
        case U'_':
            add(Kind::Literal, U" ");
            ++at_;
            break;
        case U'*': ++at_; break;
        default: return take_letters();
        }
        ++at_;
    }

    // Zeros behind the point of seconds.
    bool take_fraction()
    {
        auto end = at_ + 1;
        while (end < format_.size() && format_[end] == U'0') ++end;
        const auto* const before = last_of_date();
        if (end == at_ + 1 || !before || before != &pieces().back() || before->text[0] != U's') return false;
        add(Kind::Fraction, Text(end - at_ - 1, U'0'));
        at_ = end;
        return true;
    }

    FormatPiece* last_of_date()
    {
        const auto found = std::ranges::find_if(pieces().rbegin(), pieces().rend(), [](const FormatPiece& piece) {
            return piece.kind == Kind::Date || piece.kind == Kind::Elapsed;
        });
        return found == pieces().rend() ? nullptr : &*found;
    }

    // Minutes stand beside hours or seconds; months elsewhere.
    void add_date(Text letters)
    {
        auto* const before = last_of_date();
        const char32_t beside = before ? before->text[0] : U' ';
        if (letters[0] == U'm' && letters.size() < 3 && (beside == U'h' || beside == U's'))
            std::ranges::fill(letters, U'n');
        if (letters[0] == U's' && beside == U'm' && before->text.size() < 3) std::ranges::fill(before->text, U'n');
        add(Kind::Date, std::move(letters));
    }

    void take_quoted()
    {
        const auto end = std::min(format_.find(U'"', at_ + 1), format_.size());
        add(Kind::Literal, format_.substr(at_ + 1, end - at_ - 1).str());
        at_ = end + 1;
    }

    void take_brackets()
    {
        const auto end = format_.find(U']', at_);
        if (end == npos) throw CannotCalculate("number format");
        const Text inside = format_.substr(at_ + 1, end - at_ - 1).str();
        const Text word = TextView(lowered_).substr(at_ + 1, end - at_ - 1).str();
        at_ = end + 1;
        if (!word.empty() && word.find_first_not_of(word[0]) == Text::npos &&
            (word[0] == U'h' || word[0] == U'm' || word[0] == U's'))
            return add(Kind::Elapsed, word[0] == U'm' ? Text(word.size(), U'n') : word);
        if (word.starts_with(U'$')) return add(Kind::Literal, inside.substr(1, inside.find(U'-', 1) - 1));
        if (std::ranges::any_of(colours, [&](auto colour) { return word.starts_with(colour); })) return;
        TextView rest(word);
        const auto comparison = take_comparison(rest);
        const auto limit = number(rest);
        if (!comparison || !limit) throw CannotCalculate("number format");
        sections_.back().condition = {*comparison, *limit};
    }

    void take_letters()
    {
        const char32_t c = lowered_[at_];
        const auto size = std::min(lowered_.find_first_not_of(c, at_), lowered_.size()) - at_;
        if (c == U'y' || c == U'm' || c == U'd' || c == U'h' || c == U's' || (c == U'a' && size >= 3)) {
            add_date(lowered_.substr(at_, size));
            at_ += size;
            return;
        }
        if (c >= U'a' && c <= U'z') throw CannotCalculate("number format");
        if (c == U'/' && sections_.back().has(Kind::Digit)) throw CannotCalculate("number format with a fraction");
        add(Kind::Literal, format_.substr(at_, 1).str());
        ++at_;
    }

    TextView format_;
    Text lowered_;
    std::size_t at_ = 0;
    std::vector<FormatSection> sections_{1};
};

} // namespace

std::vector<FormatSection> parse_format(TextView format)
{
    return FormatParser(format).run();
}

} // namespace tarvik::calculation
