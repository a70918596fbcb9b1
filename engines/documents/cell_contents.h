#pragma once

#include "platform/text/text.h"

#include <string>

#include <pugixml.hpp>

/// What stands in a cell of a document's table.
namespace tarvik::ooxml {

/// Makes `text` the cell's only contents, in one paragraph with the look of the cell's first paragraph and first run.
/// LF breaks the line. A content control around the cell no
/// longer shows its placeholder nor follows data of its own, and has room for lines if there are any. Damage when the
/// contents nest too deeply to be removed; they then stay.
void replace_cell_text(pugi::xml_node cell, TextView text);

/// The paragraph that a picture is to stand in alone: the first of a cell without visible contents, else one behind the
/// contents, made if need be. Its lines are as high as what stands in them.
pugi::xml_node paragraph_for_picture(pugi::xml_node cell);
/// Appends a run with a drawing, whose XML is given.
void append_drawing(pugi::xml_node paragraph, const std::string& drawing);

} // namespace tarvik::ooxml
