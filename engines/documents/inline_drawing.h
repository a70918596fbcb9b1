#pragma once

#include "engines/documents/first_table.h"
#include "engines/documents/picture.h"

#include <string>

namespace tarvik::ooxml {

/// Inches.
struct Room {
    double width;
    double height;
};

/// What a picture in a paragraph of a cell can take: the cell's width without margins and indents; the height of a row
/// that is fixed, else of the page's text.
Room room_in_cell(const TableCell& cell, pugi::xml_node paragraph);

/// How a drawing refers to what it shows.
struct DrawingReference {
    std::string relationship; ///< the id of that to the picture's part
    int number;               ///< unique among the document's drawings
    std::string name;         ///< as the user knows the picture
    bool is_strict;           ///< whether the document uses the namespaces of the standard's strict edition
};

/// The drawing as XML: the picture as a character of the line, the way it is to be shown, in its natural size or as
/// much smaller as the room asks for.
std::string inline_drawing(const Picture& picture, const Room& room, const DrawingReference& reference);

} // namespace tarvik::ooxml
