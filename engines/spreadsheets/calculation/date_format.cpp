#include "engines/spreadsheets/calculation/format_sections.h"

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

Text padded(double number, std::size_t digits)
{
    Text text = number_text(number);
    if (text.size() < digits) text.insert(0, digits - text.size(), U'0');
    return text;
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

} // namespace

Text format_date(double number, const FormatSection& section, bool counts_from_1904)
{
    return DateFormatting(section, number, counts_from_1904).run();
}

} // namespace tarvik::calculation
