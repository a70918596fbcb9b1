#pragma once

#include "engines/spreadsheets/calculation/places.h"

#include <optional>
#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// A formula as a cell's element holds it.
struct FormulaElement {
    enum Kind { Usual, Shared, Array, DataTable };

    explicit FormulaElement(pugi::xml_node cell);

    pugi::xml_node node;
    Kind kind = Usual;
    std::string text;  ///< empty for a cell that shares the formula that another one holds
    std::string group; ///< of those that share one; a later group may use its number again
    bool has_range = false;
    std::optional<Range> filled; ///< by an array formula or a data table

    bool is_master() const noexcept { return kind == Shared && !text.empty() && has_range; }
    bool is_sharing() const noexcept { return kind == Shared && text.empty(); }
    /// From now on the cell has that formula for itself.
    void state(const std::string& formula);
};

/// The formula as it reads when its cell moves by so many rows and columns: relative references move along, absolute
/// ones stay. A reference that leaves the sheet comes back in at the other side.
std::string shifted_formula(std::string_view formula, int rows, int columns);

} // namespace tarvik::ooxml
