#include "engines/spreadsheets/calculation/area_memory.h"

#include "engines/spreadsheets/calculation/coercion.h"

namespace tarvik::calculation {

namespace {

constexpr std::size_t most_cells = 4'000'000;
constexpr std::int64_t least_area = 32;

std::size_t mixed(std::size_t hash, std::size_t with) noexcept
{
    return (hash ^ with) * 0x9e37'79b9'7f4a'7c15U + (hash >> 29U);
}

} // namespace

std::size_t AreaIndex::Hash::operator()(const Value& value) const noexcept
{
    if (const auto* const text = std::get_if<Text>(&value)) {
        std::size_t hash = text->size();
        for (const char32_t c : *text) hash = mixed(hash, lower(c));
        return hash;
    }
    if (const auto* const number = std::get_if<double>(&value)) return std::hash<double>()(*number);
    if (const auto* const truth = std::get_if<bool>(&value)) return *truth ? 1 : 2;
    return value.index();
}

bool AreaIndex::Equal::operator()(const Value& a, const Value& b) const
{
    return is_equal(a, b);
}

AreaIndex::AreaIndex(const CellSource& source, const Area& area)
{
    source.visit(area.sheet, area.range, [&](Place place, const Value& value) {
        if (std::holds_alternative<std::monostate>(value)) return;
        const auto row = static_cast<std::int64_t>(place.row) - area.range.first.row;
        positions_[value].push_back(row * area.columns() + place.column - area.range.first.column);
        ++size_;
        const auto* const text = std::get_if<Text>(&value);
        has_numbers_as_texts_ = has_numbers_as_texts_ || (text && text->find_first_of(U"0123456789") != Text::npos);
    });
}

const AreaIndex::Positions* AreaIndex::find(const Value& value) const
{
    const auto found = positions_.find(value);
    return found == positions_.end() ? nullptr : &found->second;
}

std::size_t AreaMemory::Hash::operator()(const Area& area) const noexcept
{
    std::size_t hash = static_cast<std::size_t>(area.sheet);
    for (const int number :
         {area.range.first.row, area.range.first.column, area.range.last.row, area.range.last.column})
        hash = mixed(hash, static_cast<std::size_t>(number));
    return hash;
}

const AreaIndex* AreaMemory::find(const CellSource& source, const Area& area)
{
    if (static_cast<std::int64_t>(area.rows()) * area.columns() < least_area) return nullptr;
    if (source.revision() != revision_) {
        indexes_.clear();
        size_ = 0;
        revision_ = source.revision();
    }
    const auto [found, is_new] = indexes_.try_emplace(area);
    if (is_new) return nullptr;
    if (!found->second) {
        if (size_ > most_cells) return nullptr;
        found->second = std::make_unique<AreaIndex>(source, area);
        size_ += found->second->size();
    }
    return found->second.get();
}

} // namespace tarvik::calculation
