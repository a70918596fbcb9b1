#pragma once

#include "engines/packages/package.h"
#include "engines/sheet_picture.h"

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// The look of a worksheet, from its part and the package's style and theme parts; what they leave out or what is odd
/// in them looks plain.
SheetPicture sheet_look(pugi::xml_node worksheet, const Package& package, int rows, int columns);

} // namespace tarvik::ooxml
