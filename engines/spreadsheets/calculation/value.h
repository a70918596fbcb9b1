#pragma once

#include "engines/spreadsheets/calculation/places.h"
#include "platform/text/text.h"

#include <optional>
#include <variant>

/// The language of workbook formulas: parsing and calculating, over cells that somebody else holds.
namespace tarvik::calculation {

using ooxml::Place;
using ooxml::Range;

enum class CellError { Null, DivisionByZero, Value, Reference, Name, Number, NotAvailable };

/// "#DIV/0!" and its like.
TextView error_text(CellError error) noexcept;
/// Nothing for a text that is no error's, or one that this language does not have ("#SPILL!").
std::optional<CellError> parse_error(TextView text) noexcept;

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
