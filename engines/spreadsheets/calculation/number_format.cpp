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

constexpr std::array<std::u32string_view, 12> months{U"January",   U"February", U"March",    U"April",
                                                     U"May",       U"June",     U"July",     U"August",
                                                     U"September", U"October",  U"November", U"December"};
constexpr std::array<std::u32string_view, 7> days{U"Sunday",   U"Monday", U"Tuesday", U"Wednesday",
                                                  U"Thursday", U"Friday", U"Saturday"};
constexpr std::u32string_view chinese_days = U"日一二三四五六";
constexpr int most_decimals = 127;

Text padded(double number, std::size_t digits)
{
    Text text = number_text(number);
    if (text.size() < digits) text.insert(0, digits - text.size(), U'0');
    return text;
}

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

// Minutes stand beside hours or seconds; months elsewhere.
bool is_minutes(const std::vector<FormatPiece>& pieces, std::size_t at)
{
    if (pieces[at].text[0] != U'm' || pieces[at].text.size() > 2) return false;
    for (std::size_t i = at; i-- > 0;)
        if (pieces[i].kind == Kind::Date || pieces[i].kind == Kind::Elapsed) {
            if (pieces[i].text[0] == U'h' || pieces[i].text[0] == U's') return true;
            break;
        }
    for (std::size_t i = at + 1; i < pieces.size(); ++i)
        if (pieces[i].kind == Kind::Date || pieces[i].kind == Kind::Elapsed) return pieces[i].text[0] == U's';
    return false;
}

class DateFormatting {
public:
    DateFormatting(const FormatSection& section, double number, bool counts_from_1904)
        : pieces_(section.pieces), has_half_days_(section.has(Kind::HalfDay))
    {
        for (std::size_t i = 0; i < pieces_.size(); ++i)
            if (is_fraction(i)) decimals_ = std::max(decimals_, fraction_size(i));
        const double unit = std::pow(10.0, static_cast<double>(decimals_)) * seconds_of_day;
        number_ = std::floor(number * unit + 0.5) / unit;
        time_ = calendar_time(decimals_ > 0 ? number_ - fraction() / seconds_of_day : number_, counts_from_1904);
        weekday_ = static_cast<std::size_t>(weekday(number_, counts_from_1904)) - 1;
    }

    Text run()
    {
        Text text;
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            const auto& piece = pieces_[i];
            if (is_fraction(i)) {
                text += padded(std::floor(fraction() * std::pow(10.0, static_cast<double>(fraction_size(i))) + 0.5),
                               fraction_size(i))
                            .insert(0, U".");
                i += fraction_size(i);
            } else if (piece.kind == Kind::Date) {
                text += part(i);
            } else if (piece.kind == Kind::Elapsed) {
                text += elapsed(piece.text);
            } else if (piece.kind == Kind::HalfDay) {
                text += half_day(piece.text);
            } else if (piece.kind == Kind::Digit || piece.kind == Kind::General || piece.kind == Kind::Text) {
                throw CannotCalculate("number format");
            } else {
                text += piece.text;
            }
        }
        return text;
    }

private:
    std::size_t fraction_size(std::size_t at) const
    {
        std::size_t size = 0;
        while (at + 1 + size < pieces_.size() && pieces_[at + 1 + size].kind == Kind::Digit) ++size;
        return size;
    }
    bool is_fraction(std::size_t at) const
    {
        return pieces_[at].kind == Kind::Point && at > 0 && pieces_[at - 1].text.ends_with(U's') &&
               fraction_size(at) > 0;
    }
    // Of the second.
    double fraction() const
    {
        const double unit = std::pow(10.0, static_cast<double>(decimals_));
        const double parts = std::floor((number_ - std::floor(number_)) * seconds_of_day * unit + 0.5);
        return (parts - std::floor(parts / unit) * unit) / unit;
    }

    Text part(std::size_t at) const
    {
        const Text& letters = pieces_[at].text;
        const auto size = letters.size();
        // What is shown as a whole is so everywhere.
        for (const auto& piece : pieces_)
            if (piece.kind == Kind::Elapsed && piece.text[0] == letters[0]) return elapsed(letters);
        switch (letters[0]) {
        case U'y': return size > 2 ? padded(time_.year, 4) : padded(time_.year % 100, 2);
        case U'd':
            if (size == 3) return Text(days.at(weekday_).substr(0, 3));
            return size > 3 ? Text(days.at(weekday_)) : padded(time_.day, size);
        case U'a': return (size == 3 ? Text() : Text(U"星期")) + Text(1, chinese_days[weekday_]);
        case U'h':
            return padded(has_half_days_ ? (time_.hour + 11) % 12 + 1 : time_.hour, std::min<std::size_t>(size, 2));
        case U's': return padded(time_.second, std::min<std::size_t>(size, 2));
        default: break;
        }
        if (is_minutes(pieces_, at)) return padded(time_.minute, size);
        const auto month = months.at(static_cast<std::size_t>(time_.month) - 1);
        if (size == 3) return Text(month.substr(0, 3));
        if (size == 5) return Text(month.substr(0, 1));
        return size > 3 ? Text(month) : padded(time_.month, size);
    }

    Text elapsed(const Text& letters) const
    {
        const double seconds = std::floor(number_ * seconds_of_day + (decimals_ > 0 ? 1e-6 : 0.5));
        const double unit = letters[0] == U'h' ? 3600 : letters[0] == U'm' ? 60 : 1;
        return padded(std::floor(seconds / unit), letters.size());
    }

    Text half_day(const Text& marks) const
    {
        const auto bar = marks.find(U'/');
        const Text half = time_.hour < 12 ? marks.substr(0, bar) : marks.substr(bar + 1);
        return half.size() > 1 ? upper(TextView(half)) : half;
    }

    const std::vector<FormatPiece>& pieces_;
    bool has_half_days_;
    std::size_t decimals_ = 0;
    double number_ = 0;
    CalendarTime time_;
    std::size_t weekday_ = 0;
};

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
                if (i > last_digit || (has_point && !has_exponent)) {
                    divisor *= 1000;
                } else if (pieces[i + 1].kind == Kind::Point) {
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
        return DateFormatting(section, number, counts_from_1904).run();
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
