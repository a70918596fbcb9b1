#pragma once

#include <pugixml.hpp>

namespace tarvik::ooxml {

struct TableCell {
    pugi::xml_node node;
    // Where in the table's grid, from 0, it begins, and how many columns of that it spans.
    int grid_column;
    int grid_span;
};

/// A cell of the first table among the document's own text; tables in text boxes, headers or cells do not count. Rows
/// and columns count from 1, as the word processor counts them: cells merged across are one cell of their row, a cell
/// that continues the one above keeps its number but cannot be had. Rows and cells are found in whatever wraps them.
/// Damage when there is no such table or cell.
TableCell cell_of_first_table(pugi::xml_node document, int row, int column);

} // namespace tarvik::ooxml
