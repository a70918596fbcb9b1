#pragma once

#include "engines/documents/first_table.h"

namespace tarvik::ooxml {

/// Inches.
struct Room {
    double width;
    double height;
};

/// What a picture in a paragraph of a cell can take: the cell's width without margins and indents; the height of a row
/// that is fixed, else of the page's text.
Room room_in_cell(const TableCell& cell, pugi::xml_node paragraph);

} // namespace tarvik::ooxml
