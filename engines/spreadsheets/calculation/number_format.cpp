#include "engines/spreadsheets/calculation/number_format.h"

#include "engines/spreadsheets/calculation/coercion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace tarvik::calculation {

namespace {

using Kind = FormatPiece::Kind;

constexpr int most_decimals = 127;

using Pieces = std::span<const FormatPiece>;

std::size_t digits_of(Pieces pieces)
{
    return static_cast<std::size_t>(std::ranges::count(pieces, Kind::Digit, &FormatPiece::kind));
}

/// A section in the parts that digits are laid over.
struct Layout {
    Pieces whole, decimals;
    bool has_point = false, has_commas = false;
    double divisor = 1;

    explicit Layout(Pieces pieces)
    {
        const auto point = std::ranges::find(pieces, Kind::Point, &FormatPiece::kind);
        has_point = point != pieces.end();
        whole = {pieces.begin(), point};
        if (has_point) decimals = {point + 1, pieces.end()};
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            if (pieces[i].kind == Kind::Percent) divisor /= 100;
            if (pieces[i].kind != Kind::Comma) continue;
            const bool is_between = i < whole.size() && digits_of(whole.subspan(i)) > 0;
            if (!is_between) divisor *= 1000;
            has_commas = has_commas || (is_between && digits_of(whole.first(i)) > 0);
        }
    }
};

// Lays the digits of a whole number, from the right, over those of the section; what is left goes before the first.
Text laid_out(Pieces pieces, Text digits, bool has_commas)
{
    Text text;
    std::size_t left = digits_of(pieces), placed = 0;
    const auto put = [&](char32_t digit) {
        if (has_commas && placed > 0 && placed % 3 == 0) text.insert(text.begin(), digit == U' ' ? U' ' : U',');
        text.insert(text.begin(), digit);
        ++placed;
    };
    for (std::size_t i = pieces.size(); i-- > 0;) {
        const auto& [kind, sign] = pieces[i];
        if (kind == Kind::Comma && left > 0) continue;
        if (kind != Kind::Digit) {
            text.insert(0, sign);
            continue;
        }
        --left;
        if (digits.empty() && sign != U"#") put(sign == U"?" ? U' ' : U'0');
        while (!digits.empty()) {
            put(digits.back());
            digits.pop_back();
            if (left > 0) break;
        }
    }
    return text;
}

// The decimals, from the left; zeros that are not asked for go.
Text decimals_laid_out(Pieces pieces, Text digits)
{
    Text text;
    digits.erase(digits.find_last_not_of(U'0') + 1);
    std::size_t at = 0;
    for (const auto& [kind, sign] : pieces) {
        if (kind == Kind::Comma) continue;
        if (kind != Kind::Digit) {
            text += sign;
            continue;
        }
        if (at < digits.size() || sign != U"#") text += at < digits.size() ? digits[at] : sign == U"?" ? U' ' : U'0';
        ++at;
    }
    return text;
}

Text in_digits(Pieces pieces, double number)
{
    const Layout layout(pieces);
    const auto decimals = static_cast<int>(digits_of(layout.decimals));
    if (decimals > most_decimals) throw CannotCalculate("number format");
    number /= layout.divisor;
    const Text digits = decimal_text(to_15_digits(rounded(number, decimals)), decimals);
    const auto dot = std::min(digits.find(U'.'), digits.size());
    Text text = laid_out(layout.whole, digits[0] == U'0' ? Text() : digits.substr(0, dot), layout.has_commas);
    if (!layout.has_point) return text;
    return text + U"." + decimals_laid_out(layout.decimals, digits.substr(std::min(dot + 1, digits.size())));
}

// The section for the number, and whether it shows the sign of a negative one.
std::pair<const FormatSection&, bool> choose(const std::vector<FormatSection>& sections, double number)
{
    const auto count = std::min<std::size_t>(sections.size(), 3);
    if (std::ranges::none_of(sections, [](const auto& section) { return section.condition.has_value(); })) {
        if (number < 0 && count > 1) return {sections[1], false};
        if (number == 0 && count > 2) return {sections[2], false};
        return {sections[0], true};
    }
    for (std::size_t i = 0; i < count; ++i) {
        const auto& condition = sections[i].condition;
        const double limit = condition ? condition->second : 0;
        const bool is_met = condition ? holds(condition->first, number < limit   ? -1
                                                                : number > limit ? 1
                                                                                 : 0)
                                      : i + 1 == count || (i == 1 && number < 0);
        if (is_met) return {sections[i], true};
    }
    throw CannotCalculate("number format");
}

constexpr std::array<std::u32string_view, 12> months{U"January",   U"February", U"March",    U"April",
                                                     U"May",       U"June",     U"July",     U"August",
                                                     U"September", U"October",  U"November", U"December"};
constexpr std::array<std::u32string_view, 7> days{U"Sunday",   U"Monday", U"Tuesday", U"Wednesday",
                                                  U"Thursday", U"Friday", U"Saturday"};
constexpr std::u32string_view chinese_days = U"日一二三四五六";
constexpr std::size_t two = 2; // digits, of hours and seconds

Text padded(double number, std::size_t digits)
{
    Text text = number_text(number);
    if (text.size() < digits) text.insert(0, digits - text.size(), U'0');
    return text;
}

// A number, which is a day's, in a section with letters of dates.
class DateFormatting {
public:
    DateFormatting(const FormatSection& section, double number, bool counts_from_1904)
        : pieces_(section.pieces), has_half_days_(section.has(Kind::HalfDay))
    {
        std::size_t decimals = 0;
        for (const auto& piece : pieces_)
            if (piece.kind == Kind::Fraction) decimals = std::max(decimals, piece.text.size());
        const double unit = std::pow(10.0, static_cast<double>(decimals));
        const double parts = std::floor(number * seconds_of_day * unit + 0.5); // of a second
        fraction_ = std::fmod(parts, unit) / unit;
        seconds_ = std::floor(parts / unit);
        time_ = calendar_time(seconds_ / seconds_of_day, counts_from_1904);
        weekday_ = static_cast<std::size_t>(weekday(seconds_ / seconds_of_day, counts_from_1904)) - 1;
    }

    Text run() const
    {
        Text text;
        for (const auto& piece : pieces_) {
            switch (piece.kind) {
            case Kind::Date:
            case Kind::Elapsed: text += part(piece.text); break;
            case Kind::HalfDay: text += half_day(piece.text); break;
            case Kind::Fraction: {
                const double unit = std::pow(10.0, static_cast<double>(piece.text.size()));
                text += U"." + padded(std::floor(fraction_ * unit + 0.5), piece.text.size());
                break;
            }
            case Kind::Digit:
            case Kind::General:
            case Kind::Text: throw CannotCalculate("number format");
            default: text += piece.text;
            }
        }
        return text;
    }

private:
    Text part(const Text& letters) const
    {
        const auto size = letters.size();
        // What is shown as a whole is so everywhere.
        if (std::ranges::any_of(pieces_, [&](const FormatPiece& piece) {
                return piece.kind == Kind::Elapsed && piece.text[0] == letters[0];
            }))
            return padded(std::floor(seconds_ / (letters[0] == U'h' ? 3600 : letters[0] == U'n' ? 60 : 1)), size);
        const auto named = [&](std::u32string_view name) { return Text(name.substr(0, size == 3 ? 3 : name.size())); };
        switch (letters[0]) {
        case U'y': return size > 2 ? padded(time_.year, 4) : padded(time_.year % 100, 2);
        case U'd': return size > 2 ? named(days.at(weekday_)) : padded(time_.day, size);
        case U'a': return (size == 3 ? Text() : Text(U"星期")) + chinese_days[weekday_];
        case U'h': return padded(has_half_days_ ? (time_.hour + 11) % 12 + 1 : time_.hour, std::min(size, two));
        case U'n': return padded(time_.minute, size);
        case U's': return padded(time_.second, std::min(size, two));
        default: break;
        }
        const auto month = months.at(static_cast<std::size_t>(time_.month) - 1);
        return size == 5 ? Text(month.substr(0, 1)) : size > 2 ? named(month) : padded(time_.month, size);
    }

    Text half_day(const Text& marks) const
    {
        const auto bar = marks.find(U'/');
        const Text half = time_.hour < 12 ? marks.substr(0, bar) : marks.substr(bar + 1);
        return half.size() > 1 ? upper(TextView(half)) : half;
    }

    const std::vector<FormatPiece>& pieces_;
    bool has_half_days_;
    double seconds_ = 0, fraction_ = 0; // since day 0, and the rest
    CalendarTime time_;
    std::size_t weekday_ = 0;
};

} // namespace

std::optional<Text> format_number(double number, TextView format, bool counts_from_1904)
{
    const auto sections = parse_format(format);
    const auto [section, shows_sign] = choose(sections, number);
    if (section.has(Kind::Date) || section.has(Kind::Elapsed) || section.has(Kind::HalfDay)) {
        if (number < 0 && counts_from_1904) throw CannotCalculate("a negative time");
        if (!is_day_number(number, counts_from_1904)) return std::nullopt;
        return DateFormatting(section, number, counts_from_1904).run();
    }
    if (section.has(Kind::Text) || section.has(Kind::General)) {
        Text text;
        for (const auto& piece : section.pieces)
            text += piece.kind == Kind::Text || piece.kind == Kind::General
                        ? general_text(shows_sign ? number : std::abs(number))
                        : piece.text;
        return text;
    }
    Text text = in_digits(section.pieces, std::abs(number));
    if (number < 0 && shows_sign && !section.pieces.empty()) {
        if (section.has(Kind::Digit) && text.find_first_of(U"123456789") == Text::npos)
            throw CannotCalculate("number format of a negative 0");
        text.insert(text.begin(), U'-');
    }
    return text;
}

Text format_text(TextView text, TextView format)
{
    const auto sections = parse_format(format);
    if (sections.size() <= 3 && !sections.back().has(Kind::Text)) return text.str();
    Text result;
    for (const auto& piece : sections.back().pieces) result += piece.kind == Kind::Text ? text.str() : piece.text;
    return result;
}

} // namespace tarvik::calculation
