#include "engines/spreadsheets/calculation/leaves.h"

#include "engines/spreadsheets/calculation/tokens.h"

#include <algorithm>
#include <charconv>

namespace tarvik::calculation {

namespace {

AreaReference::Corner placed(const Corner& corner, Place at, bool is_last)
{
    AreaReference::Corner result;
    result.is_row_fixed = corner.is_row_fixed || !corner.row;
    result.is_column_fixed = corner.is_column_fixed || !corner.column;
    const int row = corner.row.value_or(is_last ? ooxml::last_row_of_sheet : 1);
    const int column = corner.column.value_or(is_last ? ooxml::last_column_of_sheet : 1);
    result.row = result.is_row_fixed ? row : row - at.row;
    result.column = result.is_column_fixed ? column : column - at.column;
    return result;
}

// The pieces of what stands between a table's brackets: "[#This Row],[a]:[b]" or a plain column. An escape stays.
std::vector<std::string_view> pieces_of(std::string_view inside)
{
    if (inside.find('[') == std::string_view::npos) return {inside};
    std::vector<std::string_view> pieces;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < inside.size(); ++i) {
        if (inside[i] == '\'') {
            ++i;
        } else if (inside[i] == '[') {
            begin = i + 1;
        } else if (inside[i] == ']') {
            pieces.push_back(inside.substr(begin, i - begin));
        }
    }
    return pieces;
}

} // namespace

Node uncalculable(std::string reason)
{
    return {Uncalculable{std::move(reason)}, {}};
}

std::string undoubled(std::string_view quoted)
{
    std::string plain;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        plain += quoted[i];
        if (quoted[i] == quoted.front()) ++i;
    }
    return plain;
}

std::string in_capitals(std::string_view name)
{
    std::string capitals(name);
    std::ranges::transform(capitals, capitals.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return capitals;
}

Node number_leaf(std::string_view digits)
{
    double number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc::result_out_of_range) {
        const bool is_small =
            digits.find("e-") != std::string_view::npos || digits.find("E-") != std::string_view::npos;
        return {is_small ? Value(0.0) : Value(CellError::Number), {}};
    }
    if (error != std::errc() || end != digits.data() + digits.size()) return uncalculable("syntax");
    return {Value(number), {}};
}

Node area_leaf(std::string_view text, const Text& first_sheet, const Text& last_sheet, Place at)
{
    const auto colon = text.find(':');
    const auto one = parse_corner(text.substr(0, colon));
    const auto other = colon == std::string_view::npos ? one : parse_corner(text.substr(colon + 1));
    if (!one || !other) return uncalculable("syntax");
    return {AreaReference{first_sheet, last_sheet, placed(*one, at, false), placed(*other, at, true)}, {}};
}

Node table_leaf(std::string_view text)
{
    const auto bracket = text.find('[');
    TableReference reference;
    reference.table = lower(from_utf8(text.substr(0, bracket)));
    for (std::string_view piece : pieces_of(text.substr(bracket + 1, text.size() - bracket - 2))) {
        if (piece.starts_with('@')) {
            reference.this_row = true;
            piece.remove_prefix(1);
        }
        if (piece.empty()) continue;
        const auto special = piece.starts_with('#') ? in_capitals(piece) : std::string();
        if (special.empty()) {
            std::string plain;
            for (std::size_t i = 0; i < piece.size(); ++i) {
                if (piece[i] == '\'' && i + 1 < piece.size()) ++i;
                plain += piece[i];
            }
            (reference.first_column.empty() ? reference.first_column : reference.last_column) = lower(from_utf8(plain));
        } else if (special == "#ALL") {
            reference.headers = reference.data = reference.totals = true;
        } else if (special == "#HEADERS") {
            reference.headers = true;
        } else if (special == "#DATA") {
            reference.data = true;
        } else if (special == "#TOTALS") {
            reference.totals = true;
        } else if (special == "#THIS ROW") {
            reference.this_row = true;
        } else {
            return uncalculable("table reference");
        }
    }
    if (reference.last_column.empty()) reference.last_column = reference.first_column;
    if (!reference.headers && !reference.totals && !reference.this_row) reference.data = true;
    return {std::move(reference), {}};
}

} // namespace tarvik::calculation
