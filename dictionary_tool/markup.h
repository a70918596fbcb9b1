#pragma once

#include "platform/text/text.h"

namespace tarvik {

/// The readable text of a piece of HTML, XDXF or the like: tags go, and those that end a line or paragraph become a
/// line end; entities become their characters.
Text without_markup(TextView marked_up);

} // namespace tarvik
