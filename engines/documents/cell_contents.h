#pragma once

#include "engines/documents/first_table.h"
#include "engines/documents/picture.h"

/// What stands in a cell of a document's table.
namespace tarvik::ooxml {

/// Makes `text` the cell's only contents, in one paragraph with the look of the cell's first paragraph and first run.
/// LF breaks the line. A content control around the cell no longer shows its placeholder nor follows data of its own,
/// and has room for lines if there are any. Damage when the contents nest too deeply to be removed; they then stay.
void replace_cell_text(pugi::xml_node cell, TextView text);

/// The paragraph that a picture is to stand in alone: the first of a cell without visible contents, else one behind the
/// contents, made if need be. Its lines are as high as what stands in them.
pugi::xml_node paragraph_for_picture(pugi::xml_node cell);

/// How a drawing refers to what it shows.
struct DrawingReference {
    std::string relationship; ///< the id of that to the picture's part
    int number;               ///< unique among the document's drawings
    std::string name;         ///< as the user knows the picture
    bool is_strict;           ///< whether the document uses the namespaces of the standard's strict edition
};

/// A drawing as XML: the picture as a character of the line, the way it is to be shown, in its natural size or as much
/// smaller as the paragraph in the cell asks for: the cell's width without margins and indents; the height of a row
/// that is fixed, else of the page's text.
std::string inline_drawing(const Picture& picture, const TableCell& cell, pugi::xml_node paragraph,
                           const DrawingReference& reference);
/// Appends a run with a drawing, whose XML is given.
void append_drawing(pugi::xml_node paragraph, const std::string& drawing);

} // namespace tarvik::ooxml
