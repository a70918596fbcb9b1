#pragma once

#include "platform/text/text.h"

namespace tarvik {

/// The number rounded to two decimals, half up, as a plain decimal without trailing zeros. Before that, noise far below
/// the third decimal is taken off `value` itself.
Text wct(double& value);

/// The number as a text of 8 characters, filled with blanks on the right; the empty text if it takes 8 or more.
Text wcnum(double value);

} // namespace tarvik
