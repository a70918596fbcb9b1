#include "engines/spreadsheets/calculation/number_format.h"

#include "engines/spreadsheets/calculation/dates.h"
#include "engines/spreadsheets/calculation/formula.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvik::calculation {

namespace {

using Kind = FormatPiece::Kind;

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
            case Kind::Date: text += part(piece.text); break;
            case Kind::Elapsed: text += elapsed(piece.text); break;
            case Kind::HalfDay: text += half_day(piece.text); break;
            case Kind::Fraction: text += U"." + fraction(piece.text.size()); break;
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
        for (const auto& piece : pieces_)
            if (piece.kind == Kind::Elapsed && piece.text[0] == letters[0]) return elapsed(letters);
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

    Text elapsed(const Text& letters) const
    {
        const double unit = letters[0] == U'h' ? 3600 : letters[0] == U'n' ? 60 : 1;
        return padded(std::floor(seconds_ / unit), letters.size());
    }

    Text fraction(std::size_t digits) const
    {
        return padded(std::floor(fraction_ * std::pow(10.0, static_cast<double>(digits)) + 0.5), digits);
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

Text format_date(double number, const FormatSection& section, bool counts_from_1904)
{
    return DateFormatting(section, number, counts_from_1904).run();
}

} // namespace tarvik::calculation
