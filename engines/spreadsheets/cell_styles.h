#pragma once

#include "engines/packages/package.h"
#include "engines/sheet_picture.h"

#include <vector>

namespace tarvik::ooxml {

/// The looks that the cells of a workbook name by number, from its style and theme parts.
class CellStyles {
public:
    explicit CellStyles(const Package& package);
    /// The plain look for a number that there is none of.
    const CellLook& look(std::size_t number) const { return number < looks_.size() ? looks_[number] : plain_; }

private:
    CellLook plain_;
    std::vector<CellLook> looks_;
};

} // namespace tarvik::ooxml
