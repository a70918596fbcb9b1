#pragma once

#include "platform/text/text.h"

namespace tarvik {

/// One telephone number of a cell that may hold two with a "/" between: the first, but the second where the first
/// begins with "0".
Text telecall(TextView numbers);

} // namespace tarvik
