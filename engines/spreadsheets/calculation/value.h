#pragma once

#include "engines/spreadsheets/calculation/places.h"
#include "platform/text/text.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

/// The language of workbook formulas: parsing and calculating, over cells that somebody else holds.
namespace tarvik::calculation {

using ooxml::Place;
using ooxml::Range;

inline bool is_digit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

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

struct Area {
    int sheet = 0;
    Range range;

    int rows() const noexcept { return range.last.row - range.first.row + 1; }
    int columns() const noexcept { return range.last.column - range.first.column + 1; }
    friend bool operator==(const Area&, const Area&) = default;
};

/// What a reference points at: one area, or several of a union or a row of sheets.
using Areas = std::vector<Area>;

inline bool is_one_cell(const Areas& areas) noexcept
{
    return areas.size() == 1 && areas.front().range.first == areas.front().range.last;
}

/// Values in rows and columns, counting from 0. Those beyond the stored ones are all the same: an array of a whole
/// column takes only the memory of what the sheet holds.
class Array {
public:
    Array(int rows, int columns, int stored_rows, int stored_columns, Value rest = {})
        : rows_(rows), columns_(columns), stored_rows_(stored_rows), stored_columns_(stored_columns),
          values_(static_cast<std::size_t>(stored_rows) * static_cast<std::size_t>(stored_columns)),
          rest_(std::move(rest))
    {
    }
    Array(int rows, int columns) : Array(rows, columns, rows, columns) {}

    int rows() const noexcept { return rows_; }
    int columns() const noexcept { return columns_; }
    int stored_rows() const noexcept { return stored_rows_; }
    int stored_columns() const noexcept { return stored_columns_; }

    const Value& at(int row, int column) const noexcept
    {
        return row < stored_rows_ && column < stored_columns_ ? values_[index(row, column)] : rest_;
    }
    Value& stored(int row, int column) noexcept { return values_[index(row, column)]; }
    void set_rest(Value rest) { rest_ = std::move(rest); }

private:
    std::size_t index(int row, int column) const noexcept
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(stored_columns_) +
               static_cast<std::size_t>(column);
    }

    int rows_, columns_, stored_rows_, stored_columns_;
    std::vector<Value> values_;
    Value rest_;
};

using ArrayPointer = std::shared_ptr<const Array>;

/// What a part of a formula comes to.
using Operand = std::variant<Value, Areas, ArrayPointer>;

} // namespace tarvik::calculation
