#include "engines/spreadsheets/calculation/evaluator.h"

#include <algorithm>

namespace tarvik::calculation {

namespace {

constexpr int deepest_nesting = 500;
constexpr std::size_t most_areas = 10'000;
constexpr std::size_t largest_array = 1'200'000; // a whole column and some more
constexpr std::size_t work_of_value = 8;         // in an array, whose memory is what is short
constexpr std::size_t usual_text = 64;           // each character beyond takes as much memory as a value

constexpr std::size_t most_remembered = 4'000'000;
constexpr std::int64_t least_remembered = 32;

// Equal for texts that differ in case alone.
Value key_of(const Value& value)
{
    const auto* const text = std::get_if<Text>(&value);
    return text ? Value(lower(TextView(*text))) : value;
}

} // namespace

AreaIndex::AreaIndex(const CellSource& source, const Area& area)
{
    source.visit(area, [&](Place place, const Value& value) {
        if (std::holds_alternative<std::monostate>(value)) return;
        const auto row = static_cast<std::int64_t>(place.row) - area.range.first.row;
        positions[key_of(value)].push_back(row * area.columns() + place.column - area.range.first.column);
        ++size;
        const auto* const text = std::get_if<Text>(&value);
        has_numbers_as_texts = has_numbers_as_texts || (text && text->find_first_of(U"0123456789") != Text::npos);
    });
}

const AreaIndex::Positions* AreaIndex::find(const Value& value) const
{
    const auto found = positions.find(key_of(value));
    return found == positions.end() ? nullptr : &found->second;
}

const AreaIndex* AreaMemory::find(const CellSource& source, const Area& area)
{
    if (static_cast<std::int64_t>(area.rows()) * area.columns() < least_remembered) return nullptr;
    if (source.revision() != revision_) {
        indexes_.clear();
        size_ = 0;
        revision_ = source.revision();
    }
    const auto& [first, last] = area.range;
    const auto [found, is_new] = indexes_.try_emplace({area.sheet, first.row, first.column, last.row, last.column});
    if (is_new) return nullptr;
    if (!found->second) {
        if (size_ > most_remembered) return nullptr;
        found->second = std::make_unique<AreaIndex>(source, area);
        size_ += found->second->size;
    }
    return found->second.get();
}

std::shared_ptr<Array> Evaluator::new_array(int rows, int columns, int stored_rows, int stored_columns)
{
    const auto values = static_cast<std::size_t>(stored_rows) * static_cast<std::size_t>(stored_columns);
    if (values > largest_array) throw CannotCalculate("size of an array");
    source.spend(values * work_of_value);
    return std::make_shared<Array>(rows, columns, stored_rows, stored_columns);
}

void Evaluator::store(Array& array, int row, int column, Value value) const
{
    if (const auto* const text = std::get_if<Text>(&value))
        source.spend((std::max(text->size(), usual_text) - usual_text) * work_of_value);
    array.stored(row, column) = std::move(value);
}

Operand Evaluator::evaluate(const Node& node, Mode mode)
{
    if (depth >= deepest_nesting) throw CannotCalculate("nesting");
    ++depth;
    Operand result = std::visit(
        [&](const auto& content) -> Operand {
            if constexpr (std::is_convertible_v<decltype(content), Operand>) return content;
            else if constexpr (requires { resolve(content, at, source.names()); })
                return resolve(content, at, source.names());
            else return operand(content, node, mode);
        },
        node.content);
    --depth;
    return result;
}

Operand Evaluator::operand(const NameReference& name, const Node& /*node*/, Mode /*mode*/)
{
    const auto formula = find_formula(name, at, source.names());
    return formula ? evaluate(formula->root, Mode::Array) : Value(CellError::Name);
}

Operand Evaluator::combined(Operator how, const Operand& left, const Operand& right)
{
    const bool counts_from_1904 = source.counts_from_1904();
    const auto *one = std::get_if<Value>(&left), *other = std::get_if<Value>(&right);
    if (one && other) return operate(how, *one, *other, counts_from_1904);
    const std::array<ArrayPointer, 2> arrays{array(left), array(right)};
    return for_each_element(
        arrays,
        [&](int row, int column) {
            return operate(how, pick(*arrays[0], row, column), pick(*arrays[1], row, column), counts_from_1904);
        },
        *this);
}

Operand Evaluator::operand(const Chain& chain, const Node& node, Mode mode)
{
    Operand left = valued(evaluate(node.children.front(), mode), mode), right;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        right = valued(evaluate(node.children[i + 1], mode), mode);
        left = combined(chain[i], left, right);
    }
    const Operator last = chain.back();
    if (&node != root || (last != Operator::Add && last != Operator::Subtract)) return left;
    auto* const result = std::get_if<Value>(&left);
    if (auto* const number = result ? std::get_if<double>(result) : nullptr)
        *number = without_rest(*number, std::get<double>(to_number(std::get<Value>(right), source.counts_from_1904())));
    return left;
}

Operand Evaluator::operand(Sign sign, const Node& node, Mode mode)
{
    Operand operand = evaluate(node.children.front(), mode);
    if (sign == Sign::Plus) return operand;
    operand = valued(std::move(operand), mode);
    return sign == Sign::Minus ? combined(Operator::Multiply, operand, Value(-1.0))
                               : combined(Operator::Divide, operand, Value(100.0));
}

Operand Evaluator::operand(ReferenceOperator how, const Node& node, Mode mode)
{
    Areas joined;
    bool is_first = true;
    for (const auto& child : node.children) {
        const Operand operand = evaluate(child, mode);
        const auto* const areas = std::get_if<Areas>(&operand);
        if (!areas) {
            const Value value = single(operand);
            return std::holds_alternative<CellError>(value) ? value : Value(CellError::Value);
        }
        source.spend(joined.size() * areas->size() + 1);
        if (is_first || how == ReferenceOperator::Union) {
            joined.insert(joined.end(), areas->begin(), areas->end());
        } else if (how == ReferenceOperator::Between) {
            if (joined.size() != 1 || areas->size() != 1) return Value(CellError::Value);
            if (joined.front().sheet != areas->front().sheet) return Value(CellError::Value);
            joined.front().range.include(areas->front().range.first);
            joined.front().range.include(areas->front().range.last);
        } else {
            Areas common;
            for (const auto& a : joined) {
                for (const auto& b : *areas) {
                    if (a.sheet != b.sheet || !a.range.overlaps(b.range)) continue;
                    const auto& [first, last] = a.range;
                    common.push_back(
                        {a.sheet,
                         {{std::max(first.row, b.range.first.row), std::max(first.column, b.range.first.column)},
                          {std::min(last.row, b.range.last.row), std::min(last.column, b.range.last.column)}}});
                }
            }
            if (common.empty()) return Value(CellError::Null);
            joined = std::move(common);
        }
        if (joined.size() > most_areas) throw CannotCalculate("number of areas");
        is_first = false;
    }
    return joined;
}

Operand Evaluator::operand(const Function* function, const Node& node, Mode mode)
{
    source.spend(1);
    return Call(*this, node, mode).run(*function);
}

Area Evaluator::used(const Area& area) const
{
    const Place end = source.extent(area.sheet);
    Area cut = area;
    cut.range.last.row = std::max(cut.range.first.row, std::min(cut.range.last.row, end.row));
    cut.range.last.column = std::max(cut.range.first.column, std::min(cut.range.last.column, end.column));
    return cut;
}

void Evaluator::visit_values(const Operand& operand, const ValueVisitor& visitor)
{
    if (const auto* const value = std::get_if<Value>(&operand)) {
        visitor(*value);
    } else if (const auto* const areas = std::get_if<Areas>(&operand)) {
        for (const auto& area : *areas) source.visit(area, [&](Place, const Value& held) { visitor(held); });
    } else {
        const Array& array = *std::get<ArrayPointer>(operand);
        source.spend(static_cast<std::size_t>(array.rows()) * static_cast<std::size_t>(array.columns()));
        for (int row = 0; row < array.rows(); ++row)
            for (int column = 0; column < array.columns(); ++column) visitor(array.at(row, column));
    }
}

Value Evaluator::single(const Operand& operand)
{
    if (const auto* const value = std::get_if<Value>(&operand)) return *value;
    if (const auto* const array = std::get_if<ArrayPointer>(&operand)) return (*array)->at(0, 0);
    const auto& areas = std::get<Areas>(operand);
    if (areas.size() != 1) return CellError::Value;
    const auto& [sheet, range] = areas.front();
    Place place = range.first;
    if (place == range.last) return source.value({sheet, place});
    if (range.first.column == range.last.column) {
        place.row = at.place.row;
    } else if (range.first.row == range.last.row) {
        place.column = at.place.column;
    } else {
        return CellError::Value;
    }
    return range.contains(place) ? source.value({sheet, place}) : Value(CellError::Value);
}

Operand Evaluator::valued(Operand operand, Mode mode)
{
    const auto* const areas = std::get_if<Areas>(&operand);
    if (!areas) return operand;
    if (mode == Mode::Single || is_one_cell(*areas)) return single(operand);
    return array(operand);
}

std::vector<Value> Evaluator::results(const Formula& formula, const std::optional<Range>& filled)
{
    root = &formula.root;
    const Mode mode = filled ? Mode::Array : Mode::Single;
    const ArrayPointer values = array(valued(evaluate(formula.root, mode), mode));
    const auto& [first, last] = filled ? *filled : Range{at.place, at.place};
    std::vector<Value> results;
    for (int row = 0; row <= last.row - first.row; ++row)
        for (int column = 0; column <= last.column - first.column; ++column)
            results.push_back(pick(*values, row, column));
    for (auto& value : results)
        if (std::holds_alternative<std::monostate>(value) || value == Value(-0.0)) value = 0.0;
    return results;
}

} // namespace tarvik::calculation
