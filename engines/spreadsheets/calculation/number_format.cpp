#include "engines/spreadsheets/calculation/number_format.h"

#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/dates.h"
#include "engines/spreadsheets/calculation/format_sections.h"
#include "engines/spreadsheets/calculation/formula.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace tarvik::calculation {

namespace {

using Kind = FormatPiece::Kind;

constexpr int most_decimals = 127;

// The digits of the number, which is not negative, rounded to so many decimals; no point when there are none.
Text plain_digits(double number, int decimals)
{
    std::array<char, 512> buffer{};
    const int size =
        std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, to_15_digits(rounded(number, decimals)));
    return {buffer.data(), buffer.data() + size};
}

void insert_commas(Text& digits)
{
    const auto whole = std::min(digits.find(U'.'), digits.size());
    for (std::size_t place = whole; place > 3; place -= 3) digits.insert(place - 3, 1, U',');
}

/// What the digits of a section ask for.
struct Layout {
    std::size_t whole = 0, decimals = 0, exponent = 0; // digits
    bool has_point = false, has_exponent = false, has_commas = false;
    double divisor = 1;

    explicit Layout(const std::vector<FormatPiece>& pieces)
    {
        std::size_t last_digit = 0;
        for (std::size_t i = 0; i < pieces.size(); ++i)
            if (pieces[i].kind == Kind::Digit || pieces[i].kind == Kind::Point) last_digit = i;
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            switch (pieces[i].kind) {
            case Kind::Digit: ++(has_exponent ? exponent : has_point ? decimals : whole); break;
            case Kind::Point: has_point = true; break;
            case Kind::Exponent: has_exponent = true; break;
            case Kind::Percent: divisor /= 100; break;
            case Kind::Comma:
                if (i > last_digit || (has_point && !has_exponent) || pieces[i + 1].kind == Kind::Point) {
                    divisor *= 1000;
                } else {
                    has_commas = has_commas || whole > 0;
                }
                break;
            default: break;
            }
        }
    }
};

// Lays the digits of a whole number, from the right, over those of the section; what is left goes before the first.
Text laid_out(const std::vector<FormatPiece>& pieces, std::size_t begin, std::size_t end, Text digits, bool has_commas)
{
    if (digits == U"0") digits.clear();
    Text text;
    std::size_t left = 0, placed = 0;
    for (std::size_t i = begin; i < end; ++i) left += pieces[i].kind == Kind::Digit ? 1 : 0;
    const auto put = [&](char32_t digit) {
        if (has_commas && placed > 0 && placed % 3 == 0) text.insert(text.begin(), digit == U' ' ? U' ' : U',');
        text.insert(text.begin(), digit);
        ++placed;
    };
    for (std::size_t i = end; i-- > begin;) {
        if (pieces[i].kind == Kind::Comma && left > 0) continue;
        if (pieces[i].kind != Kind::Digit) {
            text.insert(0, pieces[i].text);
            continue;
        }
        --left;
        if (digits.empty()) {
            if (pieces[i].text == U"0") put(U'0');
            if (pieces[i].text == U"?") put(U' ');
        }
        while (!digits.empty()) {
            put(digits.back());
            digits.pop_back();
            if (left > 0) break;
        }
    }
    return text;
}

// The decimals, from the left; zeros that are not asked for go.
Text decimals_laid_out(const std::vector<FormatPiece>& pieces, std::size_t begin, std::size_t end, Text digits)
{
    Text text;
    std::size_t at = 0;
    const auto last = digits.find_last_not_of(U'0');
    for (std::size_t i = begin; i < end; ++i) {
        if (pieces[i].kind == Kind::Comma) continue;
        if (pieces[i].kind != Kind::Digit) {
            text += pieces[i].text;
            continue;
        }
        const bool is_there = last != Text::npos && at <= last;
        if (is_there || pieces[i].text == U"0") {
            text += digits[at];
        } else if (pieces[i].text == U"?") {
            text += U' ';
        }
        ++at;
    }
    return text;
}

Text with_exponent(const FormatSection& section, const Layout& layout, double number)
{
    const auto& pieces = section.pieces;
    const int step = std::max(static_cast<int>(layout.whole), 1);
    int exponent = number == 0 ? 0 : static_cast<int>(std::floor(std::log10(to_15_digits(number))));
    exponent -= step == 1 ? 0 : ((exponent % step) + step) % step;
    double mantissa = rounded(number / std::pow(10.0, exponent), static_cast<int>(layout.decimals));
    if (mantissa >= std::pow(10.0, step)) {
        exponent += step;
        mantissa = rounded(number / std::pow(10.0, exponent), static_cast<int>(layout.decimals));
    }
    const auto place = [&](Kind kind) {
        return static_cast<std::size_t>(std::ranges::find(pieces, kind, &FormatPiece::kind) - pieces.begin());
    };
    const auto mark = place(Kind::Exponent);
    const auto point = std::min(place(Kind::Point), mark);
    if (mark + 1 == pieces.size() || pieces[mark + 1].kind != Kind::Digit) throw CannotCalculate("number format");
    const Text digits = plain_digits(mantissa, static_cast<int>(layout.decimals));
    Text text = laid_out(pieces, 0, point, digits.substr(0, digits.find(U'.')), layout.has_commas);
    if (layout.has_point)
        text += U"." + decimals_laid_out(pieces, point + 1, mark,
                                         layout.decimals > 0 ? digits.substr(digits.find(U'.') + 1) : Text());
    text += pieces[mark].text[0];
    if (exponent < 0) text += U'-';
    if (exponent >= 0 && pieces[mark].text.ends_with(U'+')) text += U'+';
    const Text shown = laid_out(pieces, mark + 1, pieces.size(), number_text(std::abs(exponent)), false);
    return text + (exponent == 0 && layout.exponent == 1 ? Text(U"0") : shown);
}

Text in_digits(const FormatSection& section, double number)
{
    const auto& pieces = section.pieces;
    const Layout layout(pieces);
    number /= layout.divisor;
    if (layout.has_exponent) {
        if (layout.divisor != 1 || layout.has_commas) throw CannotCalculate("number format");
        return with_exponent(section, layout, number);
    }
    if (layout.decimals > most_decimals) throw CannotCalculate("number format");
    const auto point =
        static_cast<std::size_t>(std::ranges::find(pieces, Kind::Point, &FormatPiece::kind) - pieces.begin());
    const Text digits = plain_digits(number, static_cast<int>(layout.decimals));
    const auto dot = digits.find(U'.');
    Text text = laid_out(pieces, 0, point, digits.substr(0, dot), layout.has_commas);
    if (layout.has_point)
        text += U"." + decimals_laid_out(pieces, point + 1, pieces.size(),
                                         dot == Text::npos ? Text() : digits.substr(dot + 1));
    return text;
}

struct Chosen {
    const FormatSection* section;
    bool shows_sign; ///< of a negative number
};

std::optional<Chosen> choose(const std::vector<FormatSection>& sections, double number)
{
    const auto count = std::min<std::size_t>(sections.size(), 3);
    const bool has_conditions =
        std::ranges::any_of(sections, [](const auto& section) { return section.condition.has_value(); });
    if (has_conditions) {
        for (std::size_t i = 0; i < count; ++i) {
            const auto& condition = sections[i].condition;
            if (condition ? condition->holds(number) : i + 1 == count || (i == 1 && number < 0))
                return Chosen{&sections[i], true};
        }
        return std::nullopt;
    }
    if (number < 0 && count > 1) return Chosen{&sections[1], false};
    if (number == 0 && count > 2) return Chosen{&sections[2], false};
    return Chosen{&sections[0], true};
}

} // namespace

Text decimal_text(double number, int decimals, bool has_commas)
{
    Text digits = plain_digits(std::abs(number), decimals);
    if (has_commas) insert_commas(digits);
    return number < 0 && digits.find_first_of(U"123456789") != Text::npos ? U"-" + digits : digits;
}

std::optional<Text> format_number(double number, TextView format, bool counts_from_1904)
{
    const auto sections = parse_format(format);
    const auto chosen = choose(sections, number);
    if (!chosen) throw CannotCalculate("number format");
    const FormatSection& section = *chosen->section;
    if (section.has(Kind::Date) || section.has(Kind::Elapsed) || section.has(Kind::HalfDay)) {
        if (number < 0 && counts_from_1904) throw CannotCalculate("a negative time");
        if (!is_day_number(number, counts_from_1904)) return std::nullopt;
        return format_date(number, section, counts_from_1904);
    }
    if (section.has(Kind::Text) || section.has(Kind::General)) {
        Text text;
        for (const auto& piece : section.pieces)
            text += piece.kind == Kind::Text || piece.kind == Kind::General
                        ? general_text(chosen->shows_sign ? number : std::abs(number))
                        : piece.text;
        return text;
    }
    Text text = in_digits(section, std::abs(number));
    if (number < 0 && chosen->shows_sign && !section.pieces.empty()) {
        if (section.has(Kind::Digit) && text.find_first_of(U"123456789") == Text::npos)
            throw CannotCalculate("number format of a negative 0");
        text.insert(text.begin(), U'-');
    }
    return text;
}

Text format_text(TextView text, TextView format)
{
    const auto sections = parse_format(format);
    const bool has_section = sections.size() > 3 || sections.back().has(Kind::Text);
    if (!has_section) return text.str();
    Text result;
    for (const auto& piece : sections.back().pieces) {
        if (piece.kind == Kind::Text) {
            text.append_to(result);
        } else {
            result += piece.text;
        }
    }
    return result;
}

} // namespace tarvik::calculation
