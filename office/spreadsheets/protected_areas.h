#pragma once

#include "office/packages/package.h"
#include "office/spreadsheets/range_set.h"

#include <string_view>

namespace tarvik::ooxml {

/// Cells of a worksheet whose texts other parts repeat.
struct ProtectedAreas {
    /// The header rows of tables. A table's part names its columns by these texts, and formulas everywhere refer to
    /// them, so a spreadsheet application calls the file damaged when they differ.
    RangeSet headers;
    /// What pivot tables fill; a spreadsheet application fills it anew from their own records.
    RangeSet pivots;
};

ProtectedAreas protected_areas(const Package& package, std::string_view sheet_name);

} // namespace tarvik::ooxml
