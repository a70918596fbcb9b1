#pragma once

#include <string>
#include <string_view>

namespace tarvik::ooxml {

/// The formula as it reads when its cell moves by so many rows and columns: relative references move along, absolute
/// ones stay. A reference that leaves the sheet comes back in at the other side, as in the group of cells that share a
/// formula.
std::string shifted_formula(std::string_view formula, int rows, int columns);

} // namespace tarvik::ooxml
