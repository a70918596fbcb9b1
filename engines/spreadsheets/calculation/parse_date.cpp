#include "engines/spreadsheets/calculation/parse_date.h"

#include "engines/spreadsheets/calculation/dates.h"
#include "engines/spreadsheets/calculation/formula.h"

#include <array>
#include <charconv>
#include <cmath>
#include <vector>

namespace tarvik::calculation {

namespace {

constexpr std::array<std::string_view, 12> months{"january",   "february", "march",    "april",
                                                  "may",       "june",     "july",     "august",
                                                  "september", "october",  "november", "december"};

bool is_digit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

bool is_letter(char c) noexcept
{
    return c >= 'a' && c <= 'z';
}

// A date or time in pieces: numbers, words, and each other character by itself.
struct Piece {
    enum class Kind { Number, Month, Word, Sign } kind;
    int number = 0; ///< also the month's, and the sign's character
    std::string_view text;
};

std::optional<std::vector<Piece>> pieces_of(std::string_view text)
{
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i;
        if (is_digit(text[i])) {
            while (end < text.size() && is_digit(text[end])) ++end;
            if (end - i > 5) return std::nullopt;
            Piece piece{Piece::Kind::Number, 0, text.substr(i, end - i)};
            std::from_chars(text.data() + i, text.data() + end, piece.number);
            pieces.push_back(piece);
        } else if (is_letter(text[i])) {
            while (end < text.size() && is_letter(text[end])) ++end;
            Piece piece{Piece::Kind::Word, 0, text.substr(i, end - i)};
            for (std::size_t month = 0; month < months.size(); ++month) {
                if (piece.text.size() >= 3 &&
                    (piece.text == months.at(month) || piece.text == months.at(month).substr(0, 3)))
                    piece = {Piece::Kind::Month, static_cast<int>(month) + 1, piece.text};
            }
            pieces.push_back(piece);
        } else {
            end = i + (text[i] == '\1' ? 2 : 1);
            const char sign = text[end - 1];
            pieces.push_back({Piece::Kind::Sign, sign, text.substr(i, end - i)});
        }
        i = end;
    }
    return pieces;
}

class DateReader {
public:
    DateReader(std::vector<Piece> pieces, bool counts_from_1904)
        : pieces_(std::move(pieces)), counts_from_1904_(counts_from_1904)
    {
    }

    std::optional<double> run()
    {
        const auto date = take_date();
        skip_blanks();
        if (date && at_ == pieces_.size()) return date;
        const auto time = take_time();
        skip_blanks();
        if (!time || at_ != pieces_.size()) return std::nullopt;
        return date.value_or(0) + *time;
    }

private:
    const Piece* peek(std::size_t ahead = 0) const
    {
        return at_ + ahead < pieces_.size() ? &pieces_[at_ + ahead] : nullptr;
    }
    bool is_sign(char sign, std::size_t ahead = 0) const
    {
        const auto* const piece = peek(ahead);
        return piece && piece->kind == Piece::Kind::Sign && piece->number == sign;
    }
    bool is(Piece::Kind kind, std::size_t ahead) const
    {
        const auto* const piece = peek(ahead);
        return piece && piece->kind == kind;
    }
    void skip_blanks()
    {
        while (is_sign(' ')) ++at_;
    }
    std::optional<int> take_number()
    {
        const auto* const piece = peek();
        if (!piece || piece->kind != Piece::Kind::Number) return std::nullopt;
        ++at_;
        return piece->number;
    }

    std::optional<double> day(int year, int month, int of_month) const
    {
        if (year < 30) year += 2000;
        if (year < 100) year += 1900;
        if (year < (counts_from_1904_ ? 1904 : 1900) || year > 9999 || month < 1 || month > 12 || of_month < 1 ||
            of_month > days_of_month(year, month))
            return std::nullopt;
        return day_number(year, month, of_month, counts_from_1904_);
    }

    std::optional<double> take_date()
    {
        const auto begun = at_;
        for (const auto take : {&DateReader::take_chinese, &DateReader::take_numbers, &DateReader::take_named}) {
            if (const auto date = (this->*take)()) return date;
            at_ = begun;
        }
        return std::nullopt;
    }

    // 2020年1月5日, the day being optional.
    std::optional<double> take_chinese()
    {
        const auto year = take_number();
        if (!year || !peek() || peek()->text != "\1y") return std::nullopt;
        ++at_;
        const auto month = take_number();
        if (!month || !peek() || peek()->text != "\1m") return std::nullopt;
        ++at_;
        const auto of_month = take_number();
        if (!of_month) return day(*year, *month, 1);
        if (!peek() || peek()->text != "\1d") return std::nullopt;
        ++at_;
        return day(*year, *month, *of_month);
    }

    // 2020-1-5, 2020/1/5, 2020-1; 1/25/2020.
    std::optional<double> take_numbers()
    {
        const bool begins_with_year = peek() && peek()->text.size() == 4;
        const auto first = take_number();
        if (!first || !(is_sign('-') || is_sign('/'))) return std::nullopt;
        ++at_;
        const auto second = take_number();
        if (!second) return std::nullopt;
        if (!(is_sign('-') || is_sign('/'))) {
            if (begins_with_year) return day(*first, *second, 1);
            if (*first > 31 || *second > 31) return std::nullopt;
            throw CannotCalculate("date as a text");
        }
        ++at_;
        const auto third = take_number();
        if (!third) return std::nullopt;
        if (begins_with_year) return day(*first, *second, *third);
        if (*first > 12 && *second > 12) return std::nullopt;
        if (*first != *second || pieces_[at_ - 1].text.size() != 4) throw CannotCalculate("date as a text");
        return day(*third, *first, *second);
    }

    // 5-Jan-2020, 5 January 2020, Jan 5, 2020, Jan 2020.
    std::optional<double> take_named()
    {
        std::optional<int> of_month = take_number();
        if (is_sign('-') || is_sign(' ') || is_sign('/')) ++at_;
        const auto* const month = peek();
        if (!month || month->kind != Piece::Kind::Month) return std::nullopt;
        ++at_;
        while (is_sign('-') || is_sign(' ') || is_sign('/') || is_sign(',') || is_sign('.')) ++at_;
        auto year = take_number();
        if (!year) throw CannotCalculate("date as a text");
        if (!of_month && is_sign(',')) {
            ++at_;
            skip_blanks();
            of_month = year;
            year = take_number();
            if (!year) return std::nullopt;
        }
        if (!of_month && pieces_[at_ - 1].text.size() != 4) throw CannotCalculate("date as a text");
        return day(*year, month->number, of_month.value_or(1));
    }

    bool skip_mark(char colon_or_mark, std::string_view chinese)
    {
        if (!is_sign(colon_or_mark) && !(peek() && peek()->text == chinese)) return false;
        ++at_;
        return true;
    }

    // 9:05, 9:05:07.25, 9:05 PM, 9 PM, 9时5分7秒.
    std::optional<double> take_time()
    {
        skip_blanks();
        const auto hour = take_number();
        if (!hour) return std::nullopt;
        double minute = 0, second = 0;
        bool is_time = false;
        if (skip_mark(':', "\1h")) {
            is_time = true;
            const auto minutes = take_number();
            if (!minutes || *minutes > 59) return std::nullopt;
            minute = *minutes;
            if (skip_mark(':', "\1n") && is(Piece::Kind::Number, 0)) {
                second = take_number().value_or(0);
                if (second > 59) return std::nullopt;
                if (is_sign('.') && is(Piece::Kind::Number, 1)) {
                    ++at_;
                    const auto digits = peek()->text.size();
                    second += take_number().value_or(0) / std::pow(10.0, static_cast<double>(digits));
                }
                if (peek() && peek()->text == "\1s") ++at_;
            }
        }
        const bool is_after_blank = is_sign(' ');
        skip_blanks();
        double hours = *hour;
        if (is(Piece::Kind::Word, 0)) {
            if (!is_after_blank) return std::nullopt;
            const auto word = peek()->text;
            if ((word != "am" && word != "pm" && word != "a" && word != "p") || *hour > 12) return std::nullopt;
            hours = (*hour % 12) + (word.starts_with('p') ? 12 : 0);
            is_time = true;
            ++at_;
        }
        if (!is_time || hours > 9'999) return std::nullopt;
        return (hours * 3600 + minute * 60 + second) / seconds_of_day;
    }

    std::vector<Piece> pieces_;
    bool counts_from_1904_;
    std::size_t at_ = 0;
};

} // namespace

std::optional<double> parse_date(std::string_view text, bool counts_from_1904)
{
    auto pieces = pieces_of(text);
    if (!pieces) return std::nullopt;
    return DateReader(std::move(*pieces), counts_from_1904).run();
}

} // namespace tarvik::calculation
