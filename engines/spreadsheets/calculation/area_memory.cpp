#include "engines/spreadsheets/calculation/area_memory.h"

namespace tarvik::calculation {

namespace {

constexpr std::size_t most_cells = 4'000'000;
constexpr std::int64_t least_area = 32;

// Equal for texts that differ in case alone.
Value key_of(const Value& value)
{
    const auto* const text = std::get_if<Text>(&value);
    return text ? Value(lower(TextView(*text))) : value;
}

} // namespace

AreaIndex::AreaIndex(const CellSource& source, const Area& area)
{
    source.visit(area.sheet, area.range, [&](Place place, const Value& value) {
        if (std::holds_alternative<std::monostate>(value)) return;
        const auto row = static_cast<std::int64_t>(place.row) - area.range.first.row;
        positions_[key_of(value)].push_back(row * area.columns() + place.column - area.range.first.column);
        ++size_;
        const auto* const text = std::get_if<Text>(&value);
        has_numbers_as_texts_ = has_numbers_as_texts_ || (text && text->find_first_of(U"0123456789") != Text::npos);
    });
}

const AreaIndex::Positions* AreaIndex::find(const Value& value) const
{
    const auto found = positions_.find(key_of(value));
    return found == positions_.end() ? nullptr : &found->second;
}

const AreaIndex* AreaMemory::find(const CellSource& source, const Area& area)
{
    if (static_cast<std::int64_t>(area.rows()) * area.columns() < least_area) return nullptr;
    if (source.revision() != revision_) {
        indexes_.clear();
        size_ = 0;
        revision_ = source.revision();
    }
    const auto& [first, last] = area.range;
    const auto [found, is_new] = indexes_.try_emplace({area.sheet, first.row, first.column, last.row, last.column});
    if (is_new) return nullptr;
    if (!found->second) {
        if (size_ > most_cells) return nullptr;
        found->second = std::make_unique<AreaIndex>(source, area);
        size_ += found->second->size();
    }
    return found->second.get();
}

} // namespace tarvik::calculation
