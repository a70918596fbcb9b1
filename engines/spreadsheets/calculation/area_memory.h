#pragma once

#include "engines/spreadsheets/calculation/source.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace tarvik::calculation {

/// Where the values of an area lie: row by row, counting from 0. Cells that are absent or empty are not in it.
class AreaIndex {
public:
    using Positions = std::vector<std::int64_t>;

    AreaIndex(const CellSource& source, const Area& area);
    /// Rising; nullptr when no cell is equal to the value. Texts are equal without case.
    const Positions* find(const Value& value) const;
    std::size_t size() const noexcept { return size_; }
    /// Whether some text reads as a number or may do so.
    bool has_numbers_as_texts() const noexcept { return has_numbers_as_texts_; }

private:
    std::unordered_map<Value, Positions> positions_; // texts in lower case
    std::size_t size_ = 0;
    bool has_numbers_as_texts_ = false;
};

/// The indexes of areas that were searched more than once, as long as no value changes.
class AreaMemory {
public:
    /// nullptr the first time that the area is asked for, and for one that is not worth it. Valid until the
    /// source's revision rises.
    const AreaIndex* find(const CellSource& source, const Area& area);

private:
    std::map<std::array<int, 5>, std::unique_ptr<AreaIndex>> indexes_; // without one: asked for once
    std::uint64_t revision_ = 0;
    std::size_t size_ = 0; // of all indexes, in cells
};

} // namespace tarvik::calculation
