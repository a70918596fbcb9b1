#include "engines/spreadsheets/calculation/criteria.h"

#include "engines/spreadsheets/calculation/coercion.h"

#include <array>

namespace tarvik::calculation {

namespace {

constexpr std::array<std::pair<std::u32string_view, Operator>, 6> prefixes{{{U"<>", Operator::NotEqual},
                                                                            {U"<=", Operator::LessOrEqual},
                                                                            {U">=", Operator::GreaterOrEqual},
                                                                            {U"<", Operator::Less},
                                                                            {U">", Operator::Greater},
                                                                            {U"=", Operator::Equal}}};

// The pattern's character at `at` and what it means; moves `at` behind it.
struct PatternCharacter {
    char32_t character;
    bool is_any, is_rest;
};

PatternCharacter take(std::u32string_view pattern, std::size_t& at) noexcept
{
    const char32_t c = pattern[at++];
    if (c == U'~' && at < pattern.size() && (pattern[at] == U'*' || pattern[at] == U'?' || pattern[at] == U'~'))
        return {pattern[at++], false, false};
    return {lower(c), c == U'?', c == U'*'};
}

std::optional<double> number_of(const Value& value, bool counts_from_1904)
{
    if (const auto* const number = std::get_if<double>(&value)) return *number;
    const auto* const text = std::get_if<Text>(&value);
    if (!text || text->empty()) return std::nullopt;
    try {
        return parse_number(*text, counts_from_1904);
    } catch (const CannotCalculate&) {
        return std::nullopt; // no date that everybody reads alike
    }
}

} // namespace

bool has_wildcards(std::u32string_view text) noexcept
{
    return text.find_first_of(U"*?~") != std::u32string_view::npos;
}

bool matches_pattern(std::u32string_view pattern, std::u32string_view text, bool to_end) noexcept
{
    std::size_t at = 0, place = 0;
    std::size_t star = npos, star_place = 0;
    while (true) {
        if (at == pattern.size() && (!to_end || place == text.size())) return true;
        if (at < pattern.size()) {
            std::size_t behind = at;
            const auto [character, is_any, is_rest] = take(pattern, behind);
            if (is_rest) {
                star = at = behind;
                star_place = place;
                continue;
            }
            if (place < text.size() && (is_any || character == lower(text[place]))) {
                at = behind;
                ++place;
                continue;
            }
        }
        if (star == npos || star_place >= text.size()) return false;
        at = star;
        place = ++star_place;
    }
}

std::size_t find_pattern(std::u32string_view pattern, std::u32string_view text, std::size_t from) noexcept
{
    std::size_t star = 0;
    for (std::size_t behind = 0; star < pattern.size() && !take(pattern, behind).is_rest;) star = behind;
    const auto beginning = pattern.substr(0, star);
    // What does not follow the first place of the beginning does not follow a later one.
    for (std::size_t i = from; i <= text.size(); ++i)
        if (matches_pattern(beginning, text.substr(i), false))
            return matches_pattern(pattern, text.substr(i), false) ? i : npos;
    return npos;
}

std::optional<Operator> take_comparison(TextView& text) noexcept
{
    for (const auto& [prefix, how] : prefixes) {
        if (!text.starts_with(prefix)) continue;
        text = text.substr(prefix.size());
        return how;
    }
    return std::nullopt;
}

Criterion::Criterion(const Value& written, bool counts_from_1904) : counts_from_1904_(counts_from_1904)
{
    const auto* const text = std::get_if<Text>(&written);
    if (!text) {
        operand_ = std::holds_alternative<std::monostate>(written) ? Value(0.0) : written;
        is_key_ = true;
        return;
    }
    TextView rest(*text);
    const auto comparison = take_comparison(rest);
    how_ = comparison.value_or(Operator::Equal);
    if (rest.empty()) {
        takes_empty_text_ = !comparison;
        return;
    }
    const Text word = lower(rest);
    if (const auto number = parse_number(rest, counts_from_1904)) {
        operand_ = *number;
    } else if (word == U"true" || word == U"false") {
        operand_ = word == U"true";
    } else if (const auto error = parse_error(upper(rest))) {
        operand_ = *error;
    } else {
        const Text pattern = rest.str();
        is_pattern_ = pattern.find_first_of(U"*?") != Text::npos;
        Text meant;
        for (std::size_t at = 0; at < pattern.size();) meant += take(pattern, at).character;
        operand_ = is_pattern_ ? pattern : meant;
    }
    is_key_ = how_ == Operator::Equal && !is_pattern_;
}

bool Criterion::is_equal_to(const Value& value) const
{
    if (std::holds_alternative<std::monostate>(operand_)) {
        const auto* const text = std::get_if<Text>(&value);
        return std::holds_alternative<std::monostate>(value) || (takes_empty_text_ && text && text->empty());
    }
    if (const auto* const number = std::get_if<double>(&operand_)) {
        const auto other = number_of(value, counts_from_1904_);
        return other && *other == *number;
    }
    const auto* const text = std::get_if<Text>(&value);
    if (is_pattern_) return text && matches_pattern(std::get<Text>(operand_), *text);
    return is_equal(operand_, value);
}

bool Criterion::holds(const Value& value) const
{
    if (how_ == Operator::Equal) return is_equal_to(value);
    if (how_ == Operator::NotEqual) {
        // A number that is written as a text equals the number, but is another value too.
        if (std::holds_alternative<double>(operand_)) return !is_equal(operand_, value);
        return !is_equal_to(value);
    }
    if (value.index() != operand_.index() || std::holds_alternative<std::monostate>(operand_) ||
        std::holds_alternative<CellError>(value))
        return false;
    return calculation::holds(how_, compare(value, operand_));
}

} // namespace tarvik::calculation
