#pragma once

#include "engines/spreadsheets/calculation/formula.h"

/// Numbers and texts as a number format shows them. Names of months and days are English.
namespace tarvik::calculation {

/// Nothing for a date that there is not. CannotCalculate for what this language has no knowledge of: fractions,
/// exponents, other calendars, Chinese digits.
std::optional<Text> format_number(double number, TextView format, bool counts_from_1904);
/// The format's section for texts, or the text itself.
Text format_text(TextView text, TextView format);

/// A piece of a number format.
struct FormatPiece {
    enum class Kind {
        Literal,
        Digit, ///< "0", "#" or "?"
        Point,
        Comma,
        Percent,
        Date,     ///< letters of one kind: "yyyy", "mm"; "n" for minutes
        Elapsed,  ///< "[h]"
        Fraction, ///< of a second: "0" for each digit
        HalfDay,  ///< "AM/PM"
        General,
        Text, ///< "@"
    };
    Kind kind = Kind::Literal;
    Text text; ///< without quotes; letters in lower case
};

/// A number takes the first section whose condition it meets.
struct FormatSection {
    std::vector<FormatPiece> pieces;
    std::optional<std::pair<Operator, double>> condition; ///< a comparison with a limit

    bool has(FormatPiece::Kind kind) const
    {
        return std::ranges::find(pieces, kind, &FormatPiece::kind) != pieces.end();
    }
};

/// At least one. CannotCalculate for what is not known.
std::vector<FormatSection> parse_format(TextView format);

} // namespace tarvik::calculation
