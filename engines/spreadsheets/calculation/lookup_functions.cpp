#include "engines/spreadsheets/calculation/functions.h"

#include <algorithm>
#include <cmath>

namespace tarvik::calculation {

namespace {

constexpr std::size_t longest_key = 255;

/// An area, an array or a value as lookups see it: rows and columns, counting from 0.
struct Grid {
    /// ErrorResult for several areas, and for an error.
    Grid(Evaluator& calculating, const Operand& operand) : evaluator(calculating)
    {
        if (const auto* const areas = std::get_if<Areas>(&operand)) {
            if (areas->size() != 1) throw ErrorResult{CellError::Reference};
            area = areas->front();
            return;
        }
        if (const auto* const value = std::get_if<Value>(&operand))
            if (const auto* const error = std::get_if<CellError>(value)) throw ErrorResult{*error};
        array = evaluator.array(operand);
        area.range = {{1, 1}, {array->rows(), array->columns()}};
    }

    /// Of an area an area, else an array or a value.
    Operand part(int row, int column, int rows, int columns) const
    {
        if (!array) {
            const Place first{area.range.first.row + row, area.range.first.column + column};
            return Areas{{area.sheet, {first, {first.row + rows - 1, first.column + columns - 1}}}};
        }
        if (rows == 1 && columns == 1) return array->at(row, column);
        const auto part = evaluator.new_array(rows, columns, rows, columns);
        for (int i = 0; i < rows; ++i)
            for (int k = 0; k < columns; ++k) evaluator.store(*part, i, k, array->at(row + i, column + k));
        return ArrayPointer(part);
    }
    /// The cell so far down and across, or with is_column false the other way round.
    Operand cell(int along, int across, bool is_column) const
    {
        return is_column ? part(along, across, 1, 1) : part(across, along, 1, 1);
    }

    // In the first column, or with is_column false in the first row:

    /// The first value equal to the key; a text may be a pattern.
    std::optional<int> find_exactly(const Value& key, bool is_column, bool takes_patterns) const;
    /// The last of the values not greater than the key, or with `is_falling` not less, by halving: they are sorted.
    std::optional<int> find_sorted(const Value& key, bool is_column, bool is_falling) const;

    Area line(bool is_column) const
    {
        Area line = area;
        (is_column ? line.range.last.column : line.range.last.row) =
            is_column ? line.range.first.column : line.range.first.row;
        return line;
    }

    Value at(int along, bool is_column) const { return evaluator.single(cell(along, 0, is_column)); }

    Evaluator& evaluator;
    ArrayPointer array; // nullptr for an area
    Area area;          // of an array too, as if it began at A1
};

std::optional<int> Grid::find_exactly(const Value& key, bool is_column, bool takes_patterns) const
{
    const Value wanted = std::holds_alternative<std::monostate>(key) ? Value(0.0) : key;
    const auto* const text = std::get_if<Text>(&wanted);
    const bool is_pattern = takes_patterns && text && text->find_first_of(U"*?~") != Text::npos;
    const auto is_met = [&](const Value& value) {
        const auto* const other = std::get_if<Text>(&value);
        return is_pattern ? other && matches_pattern(*text, *other) : is_equal(value, wanted);
    };
    if (array) {
        for (int i = 0; i < (is_column ? area.rows() : area.columns()); ++i)
            if (is_met(at(i, is_column))) return i;
        return std::nullopt;
    }
    const Area searched = line(is_column);
    if (const auto* const index = is_pattern ? nullptr : evaluator.memory.find(evaluator.source, searched)) {
        const auto* const found = index->find(wanted);
        return found ? std::optional(static_cast<int>(found->front())) : std::nullopt;
    }
    std::optional<int> found;
    evaluator.source.visit(searched, [&](Place place, const Value& value) {
        if (found || !is_met(value)) return;
        found = is_column ? place.row - searched.range.first.row : place.column - searched.range.first.column;
    });
    return found;
}

std::optional<int> Grid::find_sorted(const Value& key, bool is_column, bool is_falling) const
{
    const Value wanted = std::holds_alternative<std::monostate>(key) ? Value(0.0) : key;
    const Area used = array ? area : evaluator.used(line(is_column));
    const int size = is_column ? used.rows() : used.columns();
    std::optional<int> found;
    int low = 0, high = size - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        // Values of another kind do not count: the next one that does is compared in their place.
        int place = middle;
        Value value = at(place, is_column);
        while (value.index() != wanted.index() && place < high) {
            evaluator.source.spend(1);
            value = at(++place, is_column);
        }
        if (value.index() != wanted.index()) {
            high = middle - 1;
            continue;
        }
        const int order = is_equal(value, wanted) ? 0 : compare(value, wanted);
        if (order == 0) {
            // The last of a row of equals; in a falling line the first is where the halving met it.
            while (!is_falling && place < size - 1 && is_equal(at(place + 1, is_column), wanted)) {
                evaluator.source.spend(1);
                ++place;
            }
            return place;
        }
        if (is_falling ? order > 0 : order < 0) {
            found = place;
            low = place + 1;
        } else {
            high = middle - 1;
        }
    }
    return found;
}

Grid grid(Call& call, std::size_t argument)
{
    return {call.evaluator, call.operand(argument)};
}

const Value& key_of(Call& call)
{
    const auto* const text = std::get_if<Text>(&call.value(0));
    require(!text || text->size() <= longest_key, CellError::Value);
    return call.value(0);
}

int place_of(std::optional<int> found)
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
    require(index <= (is_column ? table.area.columns() : table.area.rows()), CellError::Reference);
    const int found = place_of(call.truth(3, true) ? table.find_sorted(key, is_column, false)
                                                   : table.find_exactly(key, is_column, true));
    return table.cell(found, index - 1, is_column);
}

Operand match(Call& call)
{
    const Value& key = key_of(call);
    const Grid line = grid(call, 1);
    const bool is_column = line.area.columns() == 1;
    require(line.area.rows() == 1 || is_column, CellError::NotAvailable);
    const double kind = call.number(2, 1);
    const auto found = kind == 0 ? line.find_exactly(key, is_column, true) : line.find_sorted(key, is_column, kind < 0);
    return Value(place_of(found) + 1.0);
}

Operand look_up(Call& call)
{
    const Grid searched = grid(call, 1);
    const int rows = searched.area.rows(), columns = searched.area.columns();
    const bool has_result = call.size() > 2;
    const bool is_column = has_result ? columns == 1 : rows >= columns;
    require(!has_result || rows == 1 || columns == 1, CellError::NotAvailable);
    const int found = place_of(searched.find_sorted(call.value(0), is_column, false));
    if (!has_result) return searched.cell(found, (is_column ? columns : rows) - 1, is_column);
    const Grid result = grid(call, 2);
    const bool is_result_column = result.area.columns() == 1 && (result.area.rows() > 1 || is_column);
    require(!result.array || found < (is_result_column ? result.area.rows() : result.area.columns()),
            CellError::NotAvailable);
    return result.cell(found, 0, is_result_column);
}

Operand x_look_up(Call& call)
{
    const Grid searched = grid(call, 1), result = grid(call, 2);
    const bool is_column = searched.area.columns() == 1;
    require(searched.area.rows() == 1 || is_column, CellError::Value);
    const int kind = call.whole(4);
    if (kind != 0 && kind != 2) throw CannotCalculate("an approximate search");
    if (call.whole(5, 1) != 1) throw CannotCalculate("a search from the end");
    const auto found = searched.find_exactly(call.value(0), is_column, kind == 2);
    if (!found) return call.is_missing(3) ? Operand(Value(CellError::NotAvailable)) : call.evaluate(3);
    require(*found < (is_column ? result.area.rows() : result.area.columns()), CellError::Value);
    return is_column ? result.part(*found, 0, 1, result.area.columns()) : result.part(0, *found, result.area.rows(), 1);
}

Operand index(Call& call)
{
    Operand from = call.operand(0);
    if (const auto* const areas = std::get_if<Areas>(&from)) {
        const int number = call.whole(3, 1);
        require(number >= 1 && number <= static_cast<int>(areas->size()), CellError::Reference);
        from = Areas{(*areas)[static_cast<std::size_t>(number) - 1]};
    }
    const Grid table(call.evaluator, from);
    const int rows = table.area.rows(), columns = table.area.columns();
    int row = call.whole(1), column = call.whole(2);
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
    auto& evaluator = call.evaluator;
    const auto formula = parse(to_utf8(call.text(0)), evaluator.at.place);
    const auto& content = formula->root.content;
    if (const auto* const construct = std::get_if<Uncalculable>(&content); construct && construct->reason != "syntax")
        throw CannotCalculate(construct->reason);
    if (!std::holds_alternative<AreaReference>(content) && !std::holds_alternative<NameReference>(content) &&
        !std::holds_alternative<TableReference>(content))
        return Value(CellError::Reference);
    Operand result = evaluator.evaluate(formula->root, call.mode);
    return std::holds_alternative<Areas>(result) ? result : Operand(Value(CellError::Reference));
}

template <bool is_row>
Operand line_number(Call& call)
{
    const auto at = call.evaluator.at.place;
    if (call.size() == 0) return Value(static_cast<double>(is_row ? at.row : at.column));
    const Area& area = call.area(0);
    const int count = is_row ? area.rows() : area.columns();
    const int first = is_row ? area.range.first.row : area.range.first.column;
    if (call.mode == Mode::Single || count == 1) return Value(static_cast<double>(first));
    const int rows = is_row ? count : 1, columns = is_row ? 1 : count;
    const auto array = call.evaluator.new_array(rows, columns, rows, columns);
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
        static constexpr std::u32string_view plain = U"0123456789abcdefghijklmnopqrstuvwxyz_[].";
        const bool is_plain = !sheet.empty() && plain.find(sheet[0]) > 9 && std::ranges::none_of(sheet, [](char32_t c) {
            return c <= 0x7f && plain.find(lower(c)) == npos;
        });
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
    const ArrayPointer array = call.evaluator.array(call.operand(0));
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
    {"COLUMNS", 1, 1, "r", [](Call& call) -> Operand { return Value(grid(call, 0).area.columns() + 0.0); }},
    {"HLOOKUP", 3, 4, "vrnl", look_up_across<false>},
    {"HYPERLINK", 1, 2, "v", [](Call& call) -> Operand { return call.value(call.size() - 1); }},
    {"INDEX", 2, 4, "annn", index},
    {"INDIRECT", 1, 2, "tl", indirect, true},
    {"LOOKUP", 2, 3, "vaa", look_up},
    {"MATCH", 2, 3, "vrn", match},
    {"OFFSET", 3, 5, "rnnnn", offset, true},
    {"ROW", 0, 1, "r", line_number<true>},
    {"ROWS", 1, 1, "r", [](Call& call) -> Operand { return Value(grid(call, 0).area.rows() + 0.0); }},
    {"TRANSPOSE", 1, 1, "a", transpose},
    {"VLOOKUP", 3, 4, "vrnl", look_up_across<true>},
    {"XLOOKUP", 3, 6, "vaaxnn", x_look_up},
};
static_assert(std::ranges::is_sorted(table, {}, &Function::name));

} // namespace

constinit const std::span<const Function> lookup_functions = table;

} // namespace tarvik::calculation
