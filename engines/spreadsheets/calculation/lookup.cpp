#include "engines/spreadsheets/calculation/lookup.h"

#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/criteria.h"

namespace tarvik::calculation {

Line::Line(Evaluator& evaluator, const Operand& operand, bool is_column) : evaluator_(evaluator), is_column_(is_column)
{
    if (const auto* const areas = std::get_if<Areas>(&operand); areas && areas->size() == 1) {
        area_ = areas->front();
        if (is_column) {
            area_.range.last.column = area_.range.first.column;
        } else {
            area_.range.last.row = area_.range.first.row;
        }
        const Area used = evaluator.used(area_);
        size_ = is_column ? used.rows() : used.columns();
        return;
    }
    if (std::holds_alternative<Areas>(operand)) throw ErrorResult{CellError::NotAvailable};
    if (const auto* const value = std::get_if<Value>(&operand))
        if (const auto* const error = std::get_if<CellError>(value)) throw ErrorResult{*error};
    array_ = evaluator.array(operand);
    size_ = is_column ? array_->rows() : array_->columns();
}

Value Line::at(int i) const
{
    if (array_) return is_column_ ? array_->at(i, 0) : array_->at(0, i);
    const auto [row, column] = area_.range.first;
    return evaluator_.cell(area_.sheet, is_column_ ? Place{row + i, column} : Place{row, column + i});
}

void Line::visit(const std::function<void(int, const Value&)>& visitor) const
{
    if (array_) {
        for (int i = 0; i < size_; ++i) visitor(i, at(i));
        return;
    }
    const Place first = area_.range.first;
    evaluator_.visit(area_, [&](Place place, const Value& value) {
        visitor(is_column_ ? place.row - first.row : place.column - first.column, value);
    });
}

std::optional<int> find_exactly(Evaluator& evaluator, const Line& line, const Value& key, bool takes_patterns)
{
    const Value wanted = std::holds_alternative<std::monostate>(key) ? Value(0.0) : key;
    const auto* const text = std::get_if<Text>(&wanted);
    const bool is_pattern = takes_patterns && text && has_wildcards(*text);
    if (const auto* const area = line.area(); area && !is_pattern) {
        if (const auto* const index = evaluator.memory().find(evaluator.source(), *area)) {
            const auto* const found = index->find(wanted);
            return found ? std::optional(static_cast<int>(found->front())) : std::nullopt;
        }
    }
    std::optional<int> found;
    line.visit([&](int i, const Value& value) {
        if (found) return;
        const auto* const other = std::get_if<Text>(&value);
        if (is_pattern ? other && matches_pattern(*text, *other) : is_equal(value, wanted)) found = i;
    });
    return found;
}

std::optional<int> find_sorted(Evaluator& evaluator, const Line& line, const Value& key, bool is_falling)
{
    const Value wanted = std::holds_alternative<std::monostate>(key) ? Value(0.0) : key;
    std::optional<int> found;
    int low = 0, high = line.size() - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        // Values of another kind do not count: the next one that does is compared in their place.
        int place = middle;
        Value value = line.at(place);
        while (value.index() != wanted.index() && place < high) {
            evaluator.spend(1);
            value = line.at(++place);
        }
        if (value.index() != wanted.index()) {
            high = middle - 1;
            continue;
        }
        const int order = is_equal(value, wanted) ? 0 : compare(value, wanted);
        if (order == 0) {
            // The last of a row of equals; in a falling line the first is where the halving met it.
            while (!is_falling && place < line.size() - 1 && is_equal(line.at(place + 1), wanted)) {
                evaluator.spend(1);
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
