#pragma once

#include "engines/spreadsheets/calculation/places.h"
#include "platform/text/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <variant>

/// The language of workbook formulas: parsing and calculating, over cells that somebody else holds.
namespace tarvik::calculation {

using ooxml::Place;
using ooxml::Range;

enum class CellError { Null, DivisionByZero, Value, Reference, Name, Number, NotAvailable };

/// In the order of CellError.
inline constexpr std::array<std::u32string_view, 7> error_texts{U"#NULL!", U"#DIV/0!", U"#VALUE!", U"#REF!",
                                                                U"#NAME?", U"#NUM!",   U"#N/A"};

inline TextView error_text(CellError error) noexcept
{
    return error_texts.at(static_cast<std::size_t>(error));
}

/// Nothing for a text that is no error's, or one that this language does not have ("#SPILL!").
inline std::optional<CellError> parse_error(TextView text) noexcept
{
    const auto* const found = std::ranges::find(error_texts, text);
    if (found == error_texts.end()) return std::nullopt;
    return static_cast<CellError>(found - error_texts.begin());
}

/// What a cell holds: nothing, a number (a date is one), a truth value, a text or an error. A formula's result is never
/// nothing: where it would be, it is 0.
using Value = std::variant<std::monostate, double, bool, Text, CellError>;

/// A sheet counts from 1, in the order of the workbook.
struct CellAddress {
    int sheet = 0;
    Place place;

    friend bool operator==(const CellAddress&, const CellAddress&) = default;
};

} // namespace tarvik::calculation
