#pragma once

#include "office/packages/package.h"
#include "office/spreadsheets/places.h"

#include <string_view>
#include <vector>

namespace tarvik::ooxml {

/// Where the tables of a worksheet have their header rows. A table's part names its columns by the texts of these
/// cells, and formulas everywhere refer to them, so a spreadsheet application calls the file damaged when they differ.
std::vector<Range> table_headers(const Package& package, std::string_view sheet_name);

} // namespace tarvik::ooxml
