#pragma once

#include "engines/documents/picture.h"
#include "engines/documents/picture_room.h"

#include <string>

namespace tarvik::ooxml {

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
