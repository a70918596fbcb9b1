#pragma once

#include "engines/spreadsheets/calculation/value.h"
#include "engines/spreadsheets/cell_texts.h"

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// Reads and writes what a cell's element holds. Texts go to the workbook's table of texts, or into the cell where the
/// workbook has none.
class CellValues {
public:
    /// `strings` may be null. `counts_from_1904`: which of its two calendars the workbook uses.
    CellValues(SharedStrings* strings, bool counts_from_1904) : strings_(strings), counts_from_1904_(counts_from_1904)
    {
    }

    /// Damage when the cell refers to a text that is not in the table.
    void check(pugi::xml_node cell) const;
    /// The value as text; of a formula its cached result.
    Text text(pugi::xml_node cell) const;
    /// The value as formulas see it.
    calculation::Value value(pugi::xml_node cell) const;
    /// Whether the value is nothing or the empty text.
    bool is_empty(pugi::xml_node cell) const;
    /// Whether a formula's cell holds a result.
    static bool has_result(pugi::xml_node cell);
    /// Takes formula and value away; the format stays.
    void erase(pugi::xml_node cell);
    void write_text(pugi::xml_node cell, TextView text);
    void write_number(pugi::xml_node cell, double number);
    /// Replaces the result of a formula's cell.
    static void write_result(pugi::xml_node cell, const calculation::Value& result);
    /// Takes it away; gives whether there was one.
    static bool drop_result(pugi::xml_node cell);

private:
    SharedStrings* strings_;
    bool counts_from_1904_;
};

} // namespace tarvik::ooxml
