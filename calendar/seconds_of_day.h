#pragma once

#include "platform/text/text.h"

namespace tarvik {

/// Seconds since midnight of a text that ends in h:mm:ss or hh:mm:ss; a date may stand in front. 0 for a text with
/// fewer than two ":". Pieces that are no numbers count 0.
double sntime(TextView text);

} // namespace tarvik
