#pragma once

#include "engines/packages/package.h"

#include <vector>

namespace tarvik::ooxml {

/// What a cell's number format makes of the cell: dates have a format of their own, for a plain number in such a cell
/// reads as some day.
enum class NumberFormat : char { General, Number, Date, Text };

/// The number formats that the cells of a workbook name by number.
class NumberFormats {
public:
    /// What is odd or damaged in the style part is General.
    explicit NumberFormats(const Package& package);
    NumberFormat of(std::size_t number) const { return number < formats_.size() ? formats_[number] : NumberFormat(); }

private:
    std::vector<NumberFormat> formats_;
};

} // namespace tarvik::ooxml
