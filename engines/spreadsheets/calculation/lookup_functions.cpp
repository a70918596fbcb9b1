#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/lookup.h"
#include "engines/spreadsheets/calculation/numbers.h"

#include <algorithm>
#include <cmath>

namespace tarvik::calculation {

namespace {

constexpr std::size_t longest_key = 255;

Grid grid(Call& call, std::size_t argument)
{
    return {call.evaluator(), call.operand(argument)};
}

const Value& key_of(Call& call)
{
    const auto* const text = std::get_if<Text>(&call.value(0));
    require(!text || text->size() <= longest_key, CellError::Value);
    return call.value(0);
}

int required(std::optional<int> found)
{
    require(found.has_value(), CellError::NotAvailable);
    return *found;
}

// VLOOKUP, and HLOOKUP with rows for columns.
template <bool is_column>
Operand look_up_across(Call& call)
{
    const Value& key = key_of(call);
    const Grid table = grid(call, 1);
    const int index = call.whole(2);
    require(index >= 1, CellError::Value);
    require(index <= (is_column ? table.columns() : table.rows()), CellError::Reference);
    const int found = required(call.truth(3, true) ? table.find_sorted(key, is_column, false)
                                                   : table.find_exactly(key, is_column, true));
    return table.cell(found, index - 1, is_column);
}

Operand match(Call& call)
{
    const Value& key = key_of(call);
    const Grid line = grid(call, 1);
    const bool is_column = line.columns() == 1;
    require(line.rows() == 1 || is_column, CellError::NotAvailable);
    const double kind = call.number(2, 1);
    const auto found = kind == 0 ? line.find_exactly(key, is_column, true) : line.find_sorted(key, is_column, kind < 0);
    return Value(required(found) + 1.0);
}

Operand look_up(Call& call)
{
    const Grid searched = grid(call, 1);
    const int rows = searched.rows(), columns = searched.columns();
    const bool has_result = call.size() > 2;
    const bool is_column = has_result ? columns == 1 : rows >= columns;
    require(!has_result || rows == 1 || columns == 1, CellError::NotAvailable);
    const int found = required(searched.find_sorted(call.value(0), is_column, false));
    if (!has_result) return searched.cell(found, (is_column ? columns : rows) - 1, is_column);
    const Grid result = grid(call, 2);
    const bool is_result_column = result.columns() == 1 && (result.rows() > 1 || is_column);
    require(!result.is_array() || found < (is_result_column ? result.rows() : result.columns()),
            CellError::NotAvailable);
    return result.cell(found, 0, is_result_column);
}

Operand x_look_up(Call& call)
{
    const Grid searched = grid(call, 1), result = grid(call, 2);
    const bool is_column = searched.columns() == 1;
    require(searched.rows() == 1 || is_column, CellError::Value);
    const int kind = call.whole(4, 0);
    if (kind != 0 && kind != 2) throw CannotCalculate("an approximate search");
    if (call.whole(5, 1) != 1) throw CannotCalculate("a search from the end");
    const auto found = searched.find_exactly(call.value(0), is_column, kind == 2);
    if (!found) return call.is_missing(3) ? Operand(Value(CellError::NotAvailable)) : call.evaluate(3);
    require(*found < (is_column ? result.rows() : result.columns()), CellError::Value);
    return is_column ? result.part(*found, 0, 1, result.columns()) : result.part(0, *found, result.rows(), 1);
}

Operand index(Call& call)
{
    Operand from = call.operand(0);
    if (const auto* const areas = std::get_if<Areas>(&from)) {
        const int number = call.whole(3, 1);
        require(number >= 1 && number <= static_cast<int>(areas->size()), CellError::Reference);
        from = Areas{(*areas)[static_cast<std::size_t>(number) - 1]};
    }
    const Grid table(call.evaluator(), from);
    const int rows = table.rows(), columns = table.columns();
    int row = call.whole(1, 0), column = call.whole(2, 0);
    if (call.size() < 3 && rows == 1 && columns > 1) std::swap(row, column);
    require(row >= 0 && column >= 0, CellError::Value);
    require(row <= rows && column <= columns, CellError::Reference);
    return table.part(std::max(row - 1, 0), std::max(column - 1, 0), row == 0 ? rows : 1, column == 0 ? columns : 1);
}

Operand choose(Call& call)
{
    return call.choose([&](const Value& value) {
        const double place = std::trunc(call.to_number(value));
        require(place >= 1 && place < static_cast<double>(call.size()), CellError::Value);
        return static_cast<std::size_t>(place);
    });
}

Operand offset(Call& call)
{
    const Area& from = call.area(0);
    const int height = call.is_missing(3) ? from.rows() : call.whole(3);
    const int width = call.is_missing(4) ? from.columns() : call.whole(4);
    require(height != 0 && width != 0, CellError::Reference);
    const double row = static_cast<double>(from.range.first.row) + call.whole(1);
    const double column = static_cast<double>(from.range.first.column) + call.whole(2);
    const double last_row = row + height + (height > 0 ? -1 : 1), last_column = column + width + (width > 0 ? -1 : 1);
    for (const double end : {row, last_row}) require(end >= 1 && end <= ooxml::last_row_of_sheet, CellError::Reference);
    for (const double end : {column, last_column})
        require(end >= 1 && end <= ooxml::last_column_of_sheet, CellError::Reference);
    const Place corner{static_cast<int>(row), static_cast<int>(column)};
    Range range{corner, corner};
    range.include({static_cast<int>(last_row), static_cast<int>(last_column)});
    return Areas{{from.sheet, range}};
}

Operand indirect(Call& call)
{
    if (!call.truth(1, true)) throw CannotCalculate("INDIRECT in R1C1");
    auto& evaluator = call.evaluator();
    const auto formula = parse(to_utf8(call.text(0)), evaluator.at().place);
    const auto& content = formula->root.content;
    if (const auto* const construct = std::get_if<Uncalculable>(&content); construct && construct->reason != "syntax")
        throw CannotCalculate(construct->reason);
    if (!std::holds_alternative<AreaReference>(content) && !std::holds_alternative<NameReference>(content) &&
        !std::holds_alternative<TableReference>(content))
        return Value(CellError::Reference);
    Operand result = evaluator.evaluate(formula->root, call.mode());
    return std::holds_alternative<Areas>(result) ? result : Operand(Value(CellError::Reference));
}

template <bool is_row>
Operand line_number(Call& call)
{
    const auto at = call.evaluator().at().place;
    if (call.size() == 0) return Value(static_cast<double>(is_row ? at.row : at.column));
    const Area& area = call.area(0);
    const int count = is_row ? area.rows() : area.columns();
    const int first = is_row ? area.range.first.row : area.range.first.column;
    if (call.mode() == Mode::Single || count == 1) return Value(static_cast<double>(first));
    const int rows = is_row ? count : 1, columns = is_row ? 1 : count;
    const auto array = call.evaluator().new_array(rows, columns, rows, columns);
    for (int i = 0; i < count; ++i) array->stored(is_row ? i : 0, is_row ? 0 : i) = static_cast<double>(first + i);
    return ArrayPointer(array);
}

Operand address(Call& call)
{
    const int row = call.whole(0), column = call.whole(1), kind = call.whole(2, 1);
    if (!call.truth(3, true)) throw CannotCalculate("ADDRESS in R1C1");
    require(ooxml::is_on_sheet({row, column}) && kind >= 1 && kind <= 4, CellError::Value);
    Text text;
    if (call.size() > 4 && !call.is_missing(4)) {
        const Text& sheet = call.text(4);
        bool is_plain = !sheet.empty() && !(sheet[0] >= U'0' && sheet[0] <= U'9');
        for (const char32_t c : sheet) {
            const char32_t letter = lower(c);
            is_plain = is_plain && ((letter >= U'a' && letter <= U'z') || (c >= U'0' && c <= U'9') || c == U'_' ||
                                    c == U'[' || c == U']' || c == U'.' || c > 0x7f);
        }
        for (const char32_t c : sheet) text += c == U'\'' ? Text(U"''") : Text(1, c);
        if (!is_plain) text = U"'" + text + U"'";
        text += U'!';
    }
    if (kind == 1 || kind == 3) text += U'$';
    text += from_utf8(ooxml::column_name(column));
    if (kind == 1 || kind == 2) text += U'$';
    return Value(text + number_text(row));
}

Operand transpose(Call& call)
{
    const ArrayPointer array = call.evaluator().array(call.operand(0));
    const auto turned =
        std::make_shared<Array>(array->columns(), array->rows(), array->stored_columns(), array->stored_rows(),
                                array->at(array->rows() - 1, array->columns() - 1));
    for (int row = 0; row < array->stored_rows(); ++row)
        for (int column = 0; column < array->stored_columns(); ++column)
            turned->stored(column, row) = array->at(row, column);
    return ArrayPointer(turned);
}

constexpr Function table[] = {
    {"ADDRESS", 2, 5, "nnnlt", address},
    {"CHOOSE", 2, 255, "x", choose},
    {"COLUMN", 0, 1, "r", line_number<false>},
    {"COLUMNS", 1, 1, "r", [](Call& call) -> Operand { return Value(grid(call, 0).columns() + 0.0); }},
    {"HLOOKUP", 3, 4, "vrnl", look_up_across<false>},
    {"HYPERLINK", 1, 2, "v", [](Call& call) -> Operand { return call.value(call.size() - 1); }},
    {"INDEX", 2, 4, "annn", index},
    {"INDIRECT", 1, 2, "tl", indirect, true},
    {"LOOKUP", 2, 3, "vaa", look_up},
    {"MATCH", 2, 3, "vrn", match},
    {"OFFSET", 3, 5, "rnnnn", offset, true},
    {"ROW", 0, 1, "r", line_number<true>},
    {"ROWS", 1, 1, "r", [](Call& call) -> Operand { return Value(grid(call, 0).rows() + 0.0); }},
    {"TRANSPOSE", 1, 1, "a", transpose},
    {"VLOOKUP", 3, 4, "vrnl", look_up_across<true>},
    {"XLOOKUP", 3, 6, "vaaxnn", x_look_up},
};

} // namespace

std::span<const Function> lookup_functions() noexcept
{
    return table;
}

} // namespace tarvik::calculation
