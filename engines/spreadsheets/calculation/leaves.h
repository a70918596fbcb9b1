#pragma once

#include "engines/spreadsheets/calculation/tree.h"

#include <string>
#include <string_view>

/// Nodes without children, made of one token of a formula each.
namespace tarvik::calculation {

Node uncalculable(std::string reason);
Node number_leaf(std::string_view digits);
/// Of a cell, or of whole columns or rows, as the formula at `at` means it. The sheets in lower case, or empty.
Node area_leaf(std::string_view text, const Text& first_sheet, const Text& last_sheet, Place at);
/// Of a table's name, if any, and its brackets.
Node table_leaf(std::string_view text);

/// What stands between the quotes, each doubled one once.
std::string undoubled(std::string_view quoted);
std::string in_capitals(std::string_view name);

} // namespace tarvik::calculation
