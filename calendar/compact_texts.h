#pragma once

#include "platform/text.h"

namespace tarvik {

/// The date without its ".", "/" and "\". A date with no separator at all is given hyphens behind the year and the
/// month, in `date` itself too.
Text xsd(Text& date);

/// One telephone number of a cell that may hold two with a "/" between: the first, but the second where the first
/// begins with "0".
Text telecall(TextView numbers);

} // namespace tarvik
