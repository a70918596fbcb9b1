#include "engines/spreadsheets/calculation/lookup.h"

#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/criteria.h"

namespace tarvik::calculation {

Grid::Grid(Evaluator& evaluator, const Operand& operand) : evaluator_(evaluator)
{
    if (const auto* const areas = std::get_if<Areas>(&operand)) {
        if (areas->size() != 1) throw ErrorResult{CellError::Reference};
        area_ = areas->front();
        rows_ = area_.rows();
        columns_ = area_.columns();
        return;
    }
    if (const auto* const value = std::get_if<Value>(&operand))
        if (const auto* const error = std::get_if<CellError>(value)) throw ErrorResult{*error};
    array_ = evaluator.array(operand);
    rows_ = array_->rows();
    columns_ = array_->columns();
}

Operand Grid::part(int row, int column, int rows, int columns) const
{
    if (!array_) {
        const Place first{area_.range.first.row + row, area_.range.first.column + column};
        return Areas{{area_.sheet, {first, {first.row + rows - 1, first.column + columns - 1}}}};
    }
    if (rows == 1 && columns == 1) return array_->at(row, column);
    const auto part = evaluator_.new_array(rows, columns, rows, columns);
    for (int i = 0; i < rows; ++i)
        for (int k = 0; k < columns; ++k) part->stored(i, k) = array_->at(row + i, column + k);
    return ArrayPointer(part);
}

Area Grid::line(bool is_column) const
{
    Area line = area_;
    (is_column ? line.range.last.column : line.range.last.row) =
        is_column ? line.range.first.column : line.range.first.row;
    return line;
}

Value Grid::at(int along, bool is_column) const
{
    const int row = is_column ? along : 0, column = is_column ? 0 : along;
    if (array_) return array_->at(row, column);
    return evaluator_.cell(area_.sheet, {area_.range.first.row + row, area_.range.first.column + column});
}

std::optional<int> Grid::find_exactly(const Value& key, bool is_column, bool takes_patterns) const
{
    const Value wanted = std::holds_alternative<std::monostate>(key) ? Value(0.0) : key;
    const auto* const text = std::get_if<Text>(&wanted);
    const bool is_pattern = takes_patterns && text && has_wildcards(*text);
    const auto is_met = [&](const Value& value) {
        const auto* const other = std::get_if<Text>(&value);
        return is_pattern ? other && matches_pattern(*text, *other) : is_equal(value, wanted);
    };
    if (array_) {
        for (int i = 0; i < (is_column ? rows_ : columns_); ++i)
            if (is_met(at(i, is_column))) return i;
        return std::nullopt;
    }
    const Area searched = line(is_column);
    if (const auto* const index = is_pattern ? nullptr : evaluator_.memory().find(evaluator_.source(), searched)) {
        const auto* const found = index->find(wanted);
        return found ? std::optional(static_cast<int>(found->front())) : std::nullopt;
    }
    std::optional<int> found;
    evaluator_.visit(searched, [&](Place place, const Value& value) {
        if (found || !is_met(value)) return;
        found = is_column ? place.row - searched.range.first.row : place.column - searched.range.first.column;
    });
    return found;
}

std::optional<int> Grid::find_sorted(const Value& key, bool is_column, bool is_falling) const
{
    const Value wanted = std::holds_alternative<std::monostate>(key) ? Value(0.0) : key;
    const Area used = array_ ? Area{0, {{1, 1}, {rows_, columns_}}} : evaluator_.used(line(is_column));
    const int size = is_column ? used.rows() : used.columns();
    std::optional<int> found;
    int low = 0, high = size - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        // Values of another kind do not count: the next one that does is compared in their place.
        int place = middle;
        Value value = at(place, is_column);
        while (value.index() != wanted.index() && place < high) {
            evaluator_.spend(1);
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
                evaluator_.spend(1);
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

} // namespace tarvik::calculation
