#include "engines/spreadsheets/calculation/format_sections.h"

#include "engines/spreadsheets/calculation/formula.h"

#include <algorithm>
#include <array>

namespace tarvik::calculation {

namespace {

using Kind = FormatPiece::Kind;

constexpr std::array<std::u32string_view, 10> colours{U"black", U"blue",  U"cyan",   U"green", U"magenta",
                                                      U"red",   U"white", U"yellow", U"color", U"colour"};
constexpr std::array<std::u32string_view, 6> relations{U"<=", U">=", U"<>", U"<", U">", U"="};

class FormatParser {
public:
    explicit FormatParser(TextView format) : format_(format), lowered_(lower(format)) {}

    std::vector<FormatSection> run()
    {
        while (at_ < format_.size()) take();
        return std::move(sections_);
    }

private:
    char32_t peek(std::size_t ahead = 0) const
    {
        return at_ + ahead < format_.size() ? format_[at_ + ahead] : char32_t{0};
    }
    bool starts_with(std::u32string_view word) const { return TextView(lowered_).substr(at_).starts_with(word); }
    void add(Kind kind, Text text) { sections_.back().pieces.push_back({kind, std::move(text)}); }

    void take()
    {
        const char32_t c = peek();
        for (const std::u32string_view half_day : {U"am/pm", U"a/p", U"上午/下午"}) {
            if (!starts_with(half_day)) continue;
            add(Kind::HalfDay, format_.substr(at_, half_day.size()).str());
            at_ += half_day.size();
            return;
        }
        if (starts_with(U"general")) {
            add(Kind::General, {});
            at_ += 7;
            return;
        }
        if (starts_with(U"e+") || starts_with(U"e-")) {
            add(Kind::Exponent, format_.substr(at_, 2).str());
            at_ += 2;
            return;
        }
        switch (c) {
        case U';': sections_.emplace_back(); break;
        case U'"': return take_quoted();
        case U'[': return take_brackets();
        case U'\\': add(Kind::Literal, format_.substr(++at_, 1).str()); break;
        case U'_':
            add(Kind::Literal, U" ");
            ++at_;
            break;
        case U'*': ++at_; break;
        case U'0':
        case U'#':
        case U'?': add(Kind::Digit, Text(1, c)); break;
        case U'.': add(Kind::Point, U"."); break;
        case U',': add(Kind::Comma, U","); break;
        case U'%': add(Kind::Percent, U"%"); break;
        case U'@': add(Kind::Text, {}); break;
        default: return take_letters();
        }
        ++at_;
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
            return add(Kind::Elapsed, word);
        if (word.starts_with(U'$')) {
            const auto sign = inside.substr(1, inside.find(U'-', 1) - 1);
            return add(Kind::Literal, sign);
        }
        if (std::ranges::any_of(colours, [&](auto colour) { return word.starts_with(colour); })) return;
        for (const auto relation : relations) {
            if (!word.starts_with(relation)) continue;
            const auto limit = number(TextView(word).substr(relation.size()));
            if (!limit) break;
            sections_.back().condition = FormatSection::Condition{Text(relation), *limit};
            return;
        }
        throw CannotCalculate("number format");
    }

    void take_letters()
    {
        const char32_t c = lowered_[at_];
        std::size_t size = 1;
        while (at_ + size < lowered_.size() && lowered_[at_ + size] == c) ++size;
        const bool is_letter = (c >= U'a' && c <= U'z');
        if (c == U'y' || c == U'm' || c == U'd' || c == U'h' || c == U's' || (c == U'a' && size >= 3)) {
            add(Kind::Date, lowered_.substr(at_, size));
            at_ += size;
            return;
        }
        if (is_letter) throw CannotCalculate("number format");
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

bool FormatSection::Condition::holds(double number) const
{
    if (relation == U"<") return number < limit;
    if (relation == U"<=") return number <= limit;
    if (relation == U">") return number > limit;
    if (relation == U">=") return number >= limit;
    return (number == limit) == (relation == U"=");
}

bool FormatSection::has(FormatPiece::Kind kind) const
{
    return std::ranges::any_of(pieces, [&](const FormatPiece& piece) { return piece.kind == kind; });
}

std::vector<FormatSection> parse_format(TextView format)
{
    return FormatParser(format).run();
}

} // namespace tarvik::calculation
